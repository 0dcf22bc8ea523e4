// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/day_marks.h"

#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

struct MarkTexts {
    Q_DECLARE_TR_FUNCTIONS(DayMarks)
};

DayMark::Kind kindOf(ListingChangeKind kind)
{
    switch (kind) {
    case ListingChangeKind::Name:
        return DayMark::Kind::Name;
    case ListingChangeKind::Version:
        return DayMark::Kind::Version;
    case ListingChangeKind::Price:
        return DayMark::Kind::Price;
    case ListingChangeKind::Icon:
        return DayMark::Kind::Icon;
    }
    Q_UNREACHABLE();
}

bool isOfStorefront(ListingChangeKind kind)
{
    return kind == ListingChangeKind::Name || kind == ListingChangeKind::Price;
}

/// What stands on the chart, and all of it.
std::pair<QString, QString> wordsOf(const ListingChange &change)
{
    const QString earlier = inSentence(change.earlier);
    const QString later = inSentence(change.later);
    switch (change.kind) {
    case ListingChangeKind::Version: {
        const QString text = MarkTexts::tr("Version %1").arg(later);
        return {text, text};
    }
    case ListingChangeKind::Name:
        return {MarkTexts::tr("New name"),
                earlier.isEmpty() ? MarkTexts::tr("New name: “%1”").arg(later)
                                  : MarkTexts::tr("New name: “%1” to “%2”").arg(earlier, later)};
    case ListingChangeKind::Price:
        if (earlier.isEmpty())
            return {later, MarkTexts::tr("New price: %1").arg(later)};
        return {MarkTexts::tr("%1 to %2").arg(earlier, later),
                MarkTexts::tr("New price: %1 to %2").arg(earlier, later)};
    case ListingChangeKind::Icon:
        return {MarkTexts::tr("New icon"), MarkTexts::tr("New icon")};
    }
    Q_UNREACHABLE();
}

} // namespace

QString DayMark::symbol() const
{
    switch (kind) {
    case Kind::Note:
        return QStringLiteral("flag");
    case Kind::Version:
        return QStringLiteral("arrow.up.circle");
    case Kind::Name:
        return QStringLiteral("textformat");
    case Kind::Price:
        return QStringLiteral("dollarsign.circle");
    case Kind::Icon:
        return QStringLiteral("app.badge");
    }
    Q_UNREACHABLE();
}

std::vector<DayMark> marksOfNotes(const QList<AppNote> &notes, std::int64_t line)
{
    std::vector<DayMark> marks;
    for (const AppNote &note : notes) {
        const QString text = shownLine(note.text);
        marks.push_back({DayMark::Kind::Note, note.day, line, text, text, note.id});
    }
    return marks;
}

std::vector<DayMark> marksOfChanges(const std::vector<ListingChange> &changes,
                                    const QString &storefront, std::int64_t line,
                                    const QString &appName)
{
    std::vector<DayMark> marks;
    std::vector<const ListingChange *> seen;
    for (const ListingChange &change : changes) {
        if (isOfStorefront(change.kind) && change.storefront != storefront)
            continue;
        // What another storefront has shown before is not new.
        const bool isKnown = std::ranges::any_of(seen, [&](const ListingChange *other) {
            return other->kind == change.kind && other->earlier == change.earlier &&
                   other->later == change.later && other->storefront != change.storefront;
        });
        if (isKnown)
            continue;
        seen.push_back(&change);
        auto [label, text] = wordsOf(change);
        if (!appName.isEmpty()) {
            const QString name = inSentence(appName);
            label = MarkTexts::tr("%1: %2").arg(name, label);
            text = MarkTexts::tr("%1: %2").arg(name, text);
        }
        marks.push_back({kindOf(change.kind), utcDay(change.seenAt), line, label, text, QUuid()});
    }
    return marks;
}

void sortMarks(std::vector<DayMark> &marks)
{
    std::ranges::stable_sort(
        marks, {}, [](const DayMark &mark) { return std::pair(mark.day, !mark.isNote()); });
}

} // namespace veltrix
