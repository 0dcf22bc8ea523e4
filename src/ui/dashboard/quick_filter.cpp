// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/quick_filter.h"

#include "ui/dashboard/keyword_entry.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(QuickFilter)
};

using Kind = RankMovement::Kind;

bool hasMoved(const KeywordEntry &entry, Kind kind, Kind otherKind)
{
    return entry.movement &&
           (entry.movement->kind() == kind || entry.movement->kind() == otherKind);
}

bool isMeasuredOn(const KeywordEntry &entry, std::int64_t day)
{
    // A clock that runs a little ahead may have dated it to the next day already.
    return !entry.row.awaitingMetrics && utcDay(entry.row.lastUpdate) >= day;
}

struct Filter {
    QuickFilter filter;
    const char *id;
    QString (*title)();
    QString (*nothingTitle)();
    QString (*nothingText)();
    bool (*shows)(const KeywordEntry &entry, std::int64_t today);
};

constexpr std::array filters{
    Filter{QuickFilter::All, "all", [] { return Texts::tr("All"); }, nullptr, nullptr,
           [](const KeywordEntry &, std::int64_t) {
               return true;
           }},
    Filter{QuickFilter::Top10, "top10", [] { return Texts::tr("Top 10"); },
           [] { return Texts::tr("No keywords in the top 10"); },
           [] { return Texts::tr("No keyword has a rank from 1 to 10."); },
           [](const KeywordEntry &entry, std::int64_t) {
               return entry.row.position && *entry.row.position <= 10;
           }},
    Filter{QuickFilter::Risen, "risen", [] { return Texts::tr("Risen"); },
           [] { return Texts::tr("No risen keywords"); },
           [] { return Texts::tr("No keyword rose since the check before."); },
           [](const KeywordEntry &entry, std::int64_t) {
               return hasMoved(entry, Kind::Improved, Kind::Entered);
           }},
    Filter{QuickFilter::Fallen, "fallen", [] { return Texts::tr("Fallen"); },
           [] { return Texts::tr("No fallen keywords"); },
           [] { return Texts::tr("No keyword fell since the check before."); },
           [](const KeywordEntry &entry, std::int64_t) {
               return hasMoved(entry, Kind::Declined, Kind::Left);
           }},
    Filter{QuickFilter::NotRanked, "notRanked", [] { return Texts::tr("Not ranked"); },
           [] { return Texts::tr("No unranked keywords"); },
           [] { return Texts::tr("Every measured keyword is among the results."); },
           [](const KeywordEntry &entry, std::int64_t) {
               return !entry.row.awaitingMetrics && !entry.row.position;
           }},
    Filter{QuickFilter::NotMeasuredToday, "notMeasuredToday",
           [] { return Texts::tr("Not measured today"); },
           [] { return Texts::tr("All measured today"); },
           [] { return Texts::tr("Every keyword has been measured today."); },
           [](const KeywordEntry &entry, std::int64_t today) {
               return !isMeasuredOn(entry, today);
           }},
};
static_assert(filters.size() == quickFilters.size());

const Filter &dataOf(QuickFilter filter)
{
    return filters[static_cast<size_t>(filter)];
}

} // namespace

QuickFilterMatches quickFilterMatches(const KeywordEntry &entry, std::int64_t today)
{
    QuickFilterMatches matches;
    for (size_t place = 0; place < filters.size(); ++place)
        matches.set(place, filters[place].shows(entry, today));
    return matches;
}

QString quickFilterTitle(QuickFilter filter)
{
    return dataOf(filter).title();
}

QString nothingPassedTitle(QuickFilter filter)
{
    return dataOf(filter).nothingTitle();
}

QString nothingPassedText(QuickFilter filter)
{
    return dataOf(filter).nothingText();
}

const char *quickFilterId(QuickFilter filter)
{
    return dataOf(filter).id;
}

std::optional<QuickFilter> quickFilterOf(const QString &id)
{
    for (const Filter &data : filters) {
        if (id == QLatin1String(data.id))
            return data.filter;
    }
    return std::nullopt;
}

} // namespace veltrix
