// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/rank_notice.h"

#include "headless/measure_text.h"

#include <QStringList>

#include <algorithm>
#include <cstdlib>

namespace veltrix
{

namespace
{

constexpr qsizetype mostNamed = 3;
constexpr qsizetype longestKeyword = 40;
constexpr qsizetype longestApp = 30;
constexpr std::int64_t topTen = 10;
/// The lowest rank that has not left it yet.
constexpr std::int64_t stillTopTen = 12;
/// Where a keyword without a rank counts as being, for the order of those that moved most.
constexpr std::int64_t belowAll = 101;

/// Places gained; negative when places were lost.
std::int64_t gained(const RankChange &change)
{
    return change.before.value_or(belowAll) - change.now.value_or(belowAll);
}

bool hasMoved(const RankChange &change, const DigestChoice &choice)
{
    return choice.movements && change.before && change.now &&
           std::abs(gained(change)) >= choice.leastPlaces;
}

bool isTold(const RankChange &change, const DigestChoice &choice)
{
    return hasMoved(change, choice) || (choice.topTen && change.wasInTopTen != change.isInTopTen) ||
           (choice.results && change.before.has_value() != change.now.has_value()) ||
           (choice.bests && change.isNewBest);
}

/// "2 keywords entered the top 10, 1 left it"; empty when both are none.
QString line(std::int64_t up, const char *rose, std::int64_t down, const char *fell,
             const char *place, const char *pronoun)
{
    const auto keywords = [](std::int64_t count) {
        return count == 1 ? QStringLiteral("1 keyword")
                          : QString::number(count) + QStringLiteral(" keywords");
    };
    const auto words = [](const char *verb, const char *object) {
        return (u' ' + QString::fromLatin1(verb) + u' ' + QString::fromLatin1(object)).trimmed();
    };
    if (up > 0 && down > 0) {
        return keywords(up) + u' ' + words(rose, place) + QStringLiteral(", ") +
               QString::number(down) + u' ' + words(fell, pronoun);
    }
    if (up > 0)
        return keywords(up) + u' ' + words(rose, place);
    return down > 0 ? keywords(down) + u' ' + words(fell, place) : QString();
}

QStringList sums(const QList<RankChange> &changes, const DigestChoice &choice)
{
    const auto count = [&changes](auto &&agrees) {
        return std::int64_t(std::count_if(changes.begin(), changes.end(), agrees));
    };
    QStringList lines;
    if (choice.movements) {
        lines.append(
            line(count([&](const auto &c) { return hasMoved(c, choice) && gained(c) > 0; }), "rose",
                 count([&](const auto &c) { return hasMoved(c, choice) && gained(c) < 0; }), "fell",
                 "", ""));
    }
    if (choice.topTen) {
        const auto crossed = [&](bool before) {
            return count([before](const auto &c) {
                return c.wasInTopTen == before && c.isInTopTen != before;
            });
        };
        lines.append(line(crossed(false), "entered", crossed(true), "left", "the top 10", "it"));
    }
    if (choice.results) {
        const auto crossed = [&](bool before) {
            return count([before](const auto &c) {
                return c.before.has_value() == before && c.now.has_value() != before;
            });
        };
        lines.append(line(crossed(false), "entered", crossed(true), "left", "the results", "them"));
    }
    const auto bests = count([](const auto &c) { return c.isNewBest; });
    if (choice.bests && bests > 0) {
        lines.append(bests == 1 ? QStringLiteral("1 new best rank")
                                : QString::number(bests) + QStringLiteral(" new best ranks"));
    }
    lines.removeAll(QString());
    return lines;
}

QString shortened(const QString &name, qsizetype longest)
{
    const QString text = printable(name);
    if (text.size() <= longest)
        return text;
    QString start = text.left(longest - 1);
    if (start.back().isHighSurrogate())
        start.chop(1);
    return start.trimmed() + QStringLiteral("…");
}

QString changeText(const RankChange &change)
{
    if (!change.now)
        return QStringLiteral("left the results");
    const QString now = QString::number(*change.now);
    if (!change.before)
        return QStringLiteral("entered at ") + now;
    if (*change.before == *change.now)
        return QStringLiteral("rank ") + now;
    return QString::number(*change.before) + QStringLiteral(" → ") + now;
}

QString named(const RankChange &change)
{
    QStringList where{shortened(change.app, longestApp), change.storefront};
    where.removeAll(QString());
    return QStringLiteral("“") + shortened(change.keyword, longestKeyword) + QStringLiteral("” (") +
           where.join(QStringLiteral(", ")) + QStringLiteral("): ") + changeText(change);
}

} // namespace

bool isInTopTen(std::optional<std::int64_t> rank, bool wasInTopTen)
{
    return rank && *rank <= (wasInTopTen ? stillTopTen : topTen);
}

std::optional<RankNotice> noticeOf(const QList<RankChange> &changes, const DigestChoice &choice)
{
    QList<RankChange> told;
    std::copy_if(changes.begin(), changes.end(), std::back_inserter(told),
                 [&](const RankChange &change) { return isTold(change, choice); });
    if (told.isEmpty())
        return std::nullopt;
    std::stable_sort(told.begin(), told.end(), [](const RankChange &left, const RankChange &right) {
        return std::abs(gained(left)) > std::abs(gained(right));
    });
    QStringList lines = sums(told, choice);
    const QString title = lines.takeFirst();
    for (const RankChange &change : told.first(std::min(mostNamed, told.size())))
        lines.append(named(change));
    if (told.size() > mostNamed)
        lines.append(QStringLiteral("and %1 more").arg(told.size() - mostNamed));
    return RankNotice{title, lines.join(u'\n')};
}

} // namespace veltrix
