// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/shared_keywords.h"

#include "store/aso_store.h"
#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SharedKeywords)
};

/// One rank of an app that is tracked more than once.
std::optional<TheirCheck> theirCheck(const KeywordStandings &check,
                                     const QSet<QUuid> &competitorIds)
{
    std::optional<TheirCheck> found;
    for (const RivalStanding &rival : check.rivals) {
        if (!competitorIds.contains(rival.competitorId))
            continue;
        const bool isBetter = found && rival.rank && (!found->rank || *rival.rank < *found->rank);
        if (!found || isBetter)
            found = {check.keywordId, check.fetchedAt, rival.competitorId, rival.rank};
    }
    return found;
}

} // namespace

std::vector<TheirCheck> theirChecks(const std::vector<KeywordStandings> &newest,
                                    const QSet<QUuid> &competitorIds)
{
    std::vector<TheirCheck> checks;
    for (const KeywordStandings &check : newest) {
        if (auto theirs = theirCheck(check, competitorIds))
            checks.push_back(*theirs);
    }
    return checks;
}

QString SharedKeyword::leadText() const
{
    if (lead() == 0)
        return Texts::tr("Level");
    return (lead() > 0 ? Texts::tr("You by %1") : Texts::tr("They by %1")).arg(qAbs(lead()));
}

QString SharedKeyword::leadSentence() const
{
    if (lead() == 0)
        return Texts::tr("level");
    return (lead() > 0 ? Texts::tr("you lead by %1") : Texts::tr("they lead by %1"))
        .arg(qAbs(lead()));
}

SharedKeywords
SharedKeywords::of(const std::vector<TheirCheck> &checks,
                   const std::function<std::optional<OwnStanding>(const TheirCheck &)> &own)
{
    SharedKeywords shared;
    for (const TheirCheck &check : checks) {
        const auto standing = own(check);
        if (!standing)
            continue;
        shared.isKept = true;
        if (check.rank && standing->rank)
            shared.keywords.push_back({check.keywordId, standing->keyword, standing->country,
                                       check.competitorId, check.checkedAt, *standing->rank,
                                       *check.rank, standing->isMeasuredSince});
    }
    return shared;
}

qsizetype SharedKeywords::led() const
{
    return std::ranges::count_if(keywords,
                                 [](const SharedKeyword &keyword) { return keyword.lead() > 0; });
}

QString SharedKeywords::leadText() const
{
    const auto count = qsizetype(keywords.size());
    if (count == 0)
        return {};
    return (count == 1 ? Texts::tr("You lead on %L1 of %L2 keyword")
                       : Texts::tr("You lead on %L1 of %L2 keywords"))
        .arg(led())
        .arg(count);
}

QString SharedKeywords::emptyText(const QString &competitor) const
{
    if (!keywords.empty())
        return {};
    return isKept ? Texts::tr("No keyword yet where both rank.")
                  : Texts::tr("Ranks of %1 are kept from the next measurement on.")
                        .arg(inSentence(competitor));
}

QString SharedKeywords::olderText() const
{
    const auto older = std::ranges::count_if(keywords, &SharedKeyword::isMeasuredSince);
    if (older == 0)
        return {};
    return older == 1 ? Texts::tr("Both ranks of 1 keyword are of an earlier check: what the "
                                  "newest one found of others could not be kept.")
                      : Texts::tr("Both ranks of %L1 keywords are of earlier checks: what the "
                                  "newest ones found of others could not be kept.")
                            .arg(older);
}

std::optional<OwnStanding> ownStanding(const ASOStore &store, const TheirCheck &check)
{
    const auto keyword = store.trackedKeyword(check.keywordId);
    if (!keyword)
        return std::nullopt;
    OwnStanding own{keyword->keyword, keyword->country, std::nullopt, false};
    const std::int64_t day = utcDay(check.checkedAt);
    const SharedSnapshot newest = store.newestSnapshot(check.keywordId);
    own.isMeasuredSince = newest && utcDay(newest->fetchedAt) > day;
    if (newest && !own.isMeasuredSince) {
        if (utcDay(newest->fetchedAt) < day)
            return std::nullopt;
        own.rank = newest->position;
        return own;
    }
    for (const SharedSnapshot &snapshot : store.keywordSnapshots(check.keywordId)) {
        if (utcDay(snapshot->fetchedAt) == day) {
            own.rank = snapshot->position;
            return own;
        }
    }
    // Days that have left the state file are still known by their ranks.
    const RankDays &ranks = store.rankDays(check.keywordId);
    const std::int64_t daysAgo = ranks.today() - day;
    if (daysAgo < 0 || daysAgo >= RankDays::daysShown)
        return std::nullopt;
    const auto known = ranks.onDay(int(daysAgo));
    if (!known)
        return std::nullopt;
    own.rank = known->rank;
    return own;
}

} // namespace veltrix
