// SPDX-License-Identifier: GPL-3.0-or-later
// Which apps stand above the user's own for a keyword, and since when.
#pragma once

#include "model/itunes_app_result.h"
#include "model/keyword_standings.h"
#include "model/rank_movement.h"
#include "model/tracked_competitor.h"
#include "store/ranking_timeline.h"
#include "ui_kit/text/figures.h"

#include <QList>
#include <QLocale>

namespace veltrix
{

/// What a check says of an app.
struct CheckedRank {
    enum class Kind {
        Ranked,
        /// Not among the results.
        NotRanked,
        /// Not among the first ten, and nothing was kept of the others.
        BelowTen,
    };
    Kind kind = Kind::NotRanked;
    /// 1-based; 0 for the other kinds.
    std::int64_t rank = 0;

    bool operator==(const CheckedRank &) const = default;
};

/// An app that stands above the user's own.
struct AppAbove {
    /// 0 for a result without one, of which nothing but its place is known.
    std::int64_t trackId = 0;
    /// As it was seen last; may be empty.
    QString name;
    std::optional<Url> icon;
    std::int64_t rank = 0;
    /// What stood seven days ago, by the rule of RankDays; absent when nothing is known of it.
    std::optional<CheckedRank> weekAgo;
    /// Since then; absent where it can't be told.
    std::optional<RankMovement> movement;
    /// The first day of all the checks up to now at which it was above; in UTC days.
    std::int64_t sinceDay = 0;
    /// It may have been so before, too: of that nothing is known.
    bool isSinceOrEarlier = false;
    /// It is a competitor of the user's app, in whichever storefront.
    bool isTracked = false;

    /// The name as it is shown; of a nameless app its number, of an unknown one that it is that.
    [[nodiscard]] QString shownName() const;
    /// "# 5", "Not ranked", "Below 10", or "—".
    [[nodiscard]] QString weekAgoText() const;
    /// "↑ 2", or "—".
    [[nodiscard]] QString movementText() const;
    /// "Nov 2", "Nov 2 or earlier", or "—"; of another year than that of `now` with it.
    [[nodiscard]] QString sinceText(Date now, const QLocale &locale = wordLocale()) const;

    bool operator==(const AppAbove &) const = default;
};

/// What the sheet says of one keyword. A pure value.
struct AboveYou {
    /// When the ranks were found; absent while none are kept.
    std::optional<Date> checkedAt;
    /// The user's app at that check.
    std::optional<std::int64_t> ownRank;
    /// Whether that is known; without it nothing stands above.
    bool isOwnKnown = false;
    /// The keyword was measured on a later day, of which nothing is kept of others.
    bool isMeasuredSince = false;
    /// Best first.
    std::vector<AppAbove> apps;

    /// "Your rank 12 on Nov 22", "Your app was not ranked on Nov 22"; empty while nothing is kept.
    [[nodiscard]] QString ownText(const QLocale &locale = wordLocale()) const;
    /// What stands in the place of apps; empty when there are some.
    [[nodiscard]] QString emptyText() const;
    /// What is not kept, and what is older than the newest measurement.
    [[nodiscard]] QString noteText() const;

    struct Sources {
        /// All days kept, oldest first, one a UTC day.
        std::vector<KeywordStandings> standings;
        /// The user's app at the same checks, oldest first.
        std::vector<RankingTimeline::Observation> own;
        std::int64_t ownTrackId = 0;
        /// Those of the user's app.
        QList<TrackedCompetitor> competitors;
        /// Results that are at hand, for names and icons.
        QList<ITunesAppResult> results;
        Date now;
    };
    static AboveYou of(const Sources &sources);

    bool operator==(const AboveYou &) const = default;
};

} // namespace veltrix
