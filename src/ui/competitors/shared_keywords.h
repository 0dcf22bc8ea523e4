// SPDX-License-Identifier: GPL-3.0-or-later
// For which keywords an app of the user's and a competitor both rank, and who leads.
#pragma once

#include "model/keyword_standings.h"

#include <QSet>

#include <functional>

namespace veltrix
{

/// Where a competitor stood at the newest check of a keyword that has looked for it.
struct TheirCheck {
    QUuid keywordId;
    Date checkedAt;
    /// The TrackedCompetitor that has the rank: an app may be tracked in several storefronts.
    QUuid competitorId;
    /// 1-based; absent: not among the results.
    std::optional<std::int64_t> rank;

    bool operator==(const TheirCheck &) const = default;
};

/// What the checks say of an app that is tracked under these ids; no entry for a keyword whose
/// check has not looked for it.
std::vector<TheirCheck> theirChecks(const std::vector<KeywordStandings> &newest,
                                    const QSet<QUuid> &competitorIds);

/// Where the user's app stood at the same check.
struct OwnStanding {
    QString keyword;
    /// Upper-cased storefront code.
    QString country;
    /// 1-based; absent: not among the results.
    std::optional<std::int64_t> rank;
    /// The keyword was measured on a later day, of which nothing is kept of others.
    bool isMeasuredSince = false;
};

/// A keyword for which both rank. Both ranks are of one check.
struct SharedKeyword {
    QUuid id;
    QString keyword;
    QString country;
    QUuid competitorId;
    Date checkedAt;
    std::int64_t ownRank = 0;
    std::int64_t theirRank = 0;
    bool isMeasuredSince = false;

    /// By how many places the user's app is ahead; negative when the competitor is.
    [[nodiscard]] std::int64_t lead() const { return theirRank - ownRank; }
    /// "You by 3", "They by 8".
    [[nodiscard]] QString leadText() const;
    /// "you lead by 3", "they lead by 8".
    [[nodiscard]] QString leadSentence() const;

    bool operator==(const SharedKeyword &) const = default;
};

/// Everything that the page of a competitor says of shared keywords. A pure value.
struct SharedKeywords {
    /// In the order of the checks.
    std::vector<SharedKeyword> keywords;
    /// Some check has looked for the competitor.
    bool isKept = false;

    /// `own` says where the user's app stood at a check; nothing for a keyword that is not tracked
    /// any more and for a check of which that is not known.
    static SharedKeywords
    of(const std::vector<TheirCheck> &checks,
       const std::function<std::optional<OwnStanding>(const TheirCheck &)> &own);

    /// Keywords on which the user's app leads.
    [[nodiscard]] qsizetype led() const;
    /// "You lead on 5 of 11 keywords"; empty without any.
    [[nodiscard]] QString leadText() const;
    /// What stands in the place of keywords; empty when there are some.
    [[nodiscard]] QString emptyText(const QString &competitor) const;
    /// Which ranks are older than the newest measurement; empty when none are.
    [[nodiscard]] QString olderText() const;

    bool operator==(const SharedKeywords &) const = default;
};

class ASOStore;

/// Where the app stood at that check of its keyword, by what the store has at hand.
std::optional<OwnStanding> ownStanding(const ASOStore &store, const TheirCheck &check);

} // namespace veltrix
