// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/change_log.h"

#include "ui_kit/text/date_texts.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"

#include <QCoreApplication>
#include <QSet>

#include <algorithm>
#include <functional>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ChangeLog)
};

/// A change and whose histories have it.
struct Noticed {
    ListingChange change;
    QSet<size_t> histories;
};

bool isSame(const ListingChange &left, const ListingChange &right)
{
    const bool isOfOneStorefront =
        left.kind != ListingChangeKind::Price || left.storefront == right.storefront;
    return left.kind == right.kind && left.earlier == right.earlier && left.later == right.later &&
           isOfOneStorefront;
}

/// Every change once, oldest first.
std::vector<Noticed> merged(const std::vector<ListingHistory> &histories)
{
    std::vector<std::pair<ListingChange, size_t>> all;
    for (size_t i = 0; i < histories.size(); ++i) {
        for (const ListingChange &change : histories[i].changes)
            all.emplace_back(change, i);
    }
    std::ranges::stable_sort(all, {}, [](const auto &one) { return one.first.seenAt; });
    std::vector<Noticed> noticed;
    for (const auto &[change, history] : all) {
        // A history has each of its own changes, the same one again included.
        const auto known =
            std::find_if(noticed.rbegin(), noticed.rend(),
                         [&, &wanted = change, from = history](const auto &one) {
                             return isSame(one.change, wanted) && !one.histories.contains(from);
                         });
        if (known != noticed.rend())
            known->histories.insert(history);
        else
            noticed.push_back({change, {history}});
    }
    return noticed;
}

QString dayOf(Date date, Date now, const QLocale &locale)
{
    if (!isCalendarDate(date))
        return QStringLiteral("—");
    const bool isThisYear =
        isCalendarDate(now) && calendarDay(date).year() == calendarDay(now).year();
    return dayText(date, isThisYear ? DayFormat::Day : DayFormat::DayAndYear, locale);
}

/// What of a fact became another, as it is shown and as it is read.
struct FactTexts {
    QString symbol;
    QString changed;
    QString added;
    QString removed;
};

FactTexts textsOf(ListingChangeKind kind)
{
    switch (kind) {
    case ListingChangeKind::Name:
        return {QStringLiteral("textformat"), Texts::tr("New name"), Texts::tr("Name given"),
                Texts::tr("Name removed")};
    case ListingChangeKind::Version:
        return {QStringLiteral("arrow.up.circle"), Texts::tr("New version"),
                Texts::tr("Version given"), Texts::tr("Version removed")};
    case ListingChangeKind::Price:
        return {QStringLiteral("dollarsign.circle"), Texts::tr("New price"),
                Texts::tr("Price given"), Texts::tr("Price removed")};
    case ListingChangeKind::Icon:
        return {QStringLiteral("app.badge"), Texts::tr("New icon"), Texts::tr("Icon given"),
                Texts::tr("Icon removed")};
    }
    Q_UNREACHABLE();
}

QString joined(const QStringList &parts)
{
    QStringList said = parts;
    said.removeAll(QString());
    return said.join(QStringLiteral(", "));
}

QString lowerFirst(const QString &text)
{
    return text.left(1).toLower() + text.mid(1);
}

ChangeLogEntry entryOf(const ListingChange &change, bool namesStorefront, const QString &day)
{
    const FactTexts fact = textsOf(change.kind);
    const QString earlier = inSentence(change.earlier);
    const QString later = inSentence(change.later);
    ChangeLogEntry entry;
    entry.symbol = fact.symbol;
    entry.day = day;
    entry.title = fact.changed;
    if (later.isEmpty())
        entry.title = fact.removed;
    else if (earlier.isEmpty())
        entry.title = fact.added;
    if (namesStorefront)
        entry.title = Texts::tr("%1 in %2").arg(entry.title, storefrontName(change.storefront));
    QString read;
    if (change.kind == ListingChangeKind::Icon) {
        entry.pictures = {Url::fromText(change.earlier), Url::fromText(change.later)};
    } else if (later.isEmpty()) {
        entry.detail = Texts::tr("It was %1.").arg(earlier);
        read = lowerFirst(entry.detail);
    } else if (earlier.isEmpty()) {
        entry.detail = later;
        read = later;
    } else {
        entry.detail = Texts::tr("%1 → %2").arg(earlier, later);
        read = Texts::tr("%1 to %2").arg(earlier, later);
    }
    entry.sentence = joined({day, lowerFirst(entry.title), read});
    return entry;
}

ChangeLogEntry trackedEntry(const std::optional<Date> &since, Date now, const QLocale &locale)
{
    ChangeLogEntry entry;
    entry.symbol = QStringLiteral("flag");
    entry.title = Texts::tr("Tracked");
    entry.detail = since ? Texts::tr("Ranks and changes are kept since then.")
                         : Texts::tr("Ranks and changes are kept from the next measurement on.");
    if (since)
        entry.day = dayOf(*since, now, locale);
    entry.sentence = joined({entry.day, lowerFirst(entry.title), lowerFirst(entry.detail)});
    return entry;
}

} // namespace

std::vector<ChangeLogEntry> changeLog(const ListingPast &past, Date now, const QLocale &locale)
{
    std::vector<Noticed> noticed = merged(past.histories);
    // What was noticed at once stays in its order.
    std::ranges::stable_sort(noticed, std::greater(),
                             [](const Noticed &one) { return one.change.seenAt; });
    QSet<QString> storefronts(past.storefronts.begin(), past.storefronts.end());
    for (const Noticed &one : noticed) {
        if (one.change.kind == ListingChangeKind::Price)
            storefronts.insert(one.change.storefront);
    }
    std::vector<ChangeLogEntry> log;
    for (const Noticed &one : noticed) {
        const bool isPrice = one.change.kind == ListingChangeKind::Price;
        log.push_back(entryOf(one.change, isPrice && storefronts.size() > 1,
                              dayOf(one.change.seenAt, now, locale)));
    }
    std::optional<Date> since;
    for (const ListingHistory &history : past.histories) {
        if (history.since && (!since || *history.since < *since))
            since = history.since;
    }
    log.push_back(trackedEntry(since, now, locale));
    return log;
}

} // namespace veltrix
