// SPDX-License-Identifier: GPL-3.0-or-later
// Where others stood when a keyword was measured.
#pragma once

#include "model/date.h"

#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

namespace veltrix
{

/// An app that was among the first results.
struct LeadingApp {
    /// The App Store's numeric app id; 0 for a result without one, which leaves its place.
    std::int64_t trackId = 0;
    /// As it was seen last; empty when no result has named it.
    QString name;

    bool operator==(const LeadingApp &) const = default;
};

/// Where a competitor stood.
struct RivalStanding {
    /// A TrackedCompetitor.
    QUuid competitorId;
    /// 1-based rank; absent means that it was looked for and not among the results.
    std::optional<std::int64_t> rank;

    bool operator==(const RivalStanding &) const = default;
};

/// What one measurement of a keyword says of apps beside the user's own.
struct KeywordStandings {
    /// The TrackedKeyword measured.
    QUuid keywordId;
    /// The date of its KeywordSnapshot.
    Date fetchedAt;
    /// The apps that led the results, best first; at most mostLeaders.
    std::vector<LeadingApp> leaders;
    /// The competitors that were tracked for the keyword's app then.
    std::vector<RivalStanding> rivals;

    static constexpr size_t mostLeaders = 10;

    bool operator==(const KeywordStandings &) const = default;
};

} // namespace veltrix
