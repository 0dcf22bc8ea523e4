// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/rival_app.h"

#include <algorithm>

namespace veltrix
{

std::vector<RivalApp> rivalApps(const QList<TrackedCompetitor> &competitors,
                                const QString &storefront)
{
    std::vector<RivalApp> apps;
    for (const TrackedCompetitor &competitor : competitors) {
        const auto known = std::ranges::find(apps, competitor.trackId, &RivalApp::trackId);
        if (known == apps.end()) {
            apps.push_back({competitor.trackId, competitor.name, {competitor.id}});
            continue;
        }
        known->competitorIds.push_back(competitor.id);
        if (competitor.country == storefront)
            known->name = competitor.name;
    }
    return apps;
}

std::optional<RivalStanding> standingOf(const RivalApp &app, const KeywordStandings &measured)
{
    std::optional<RivalStanding> found;
    for (const RivalStanding &rival : measured.rivals) {
        if (std::ranges::find(app.competitorIds, rival.competitorId) == app.competitorIds.end())
            continue;
        if (!found)
            found = rival;
        else if (rival.rank)
            found->rank = std::min(found->rank.value_or(*rival.rank), *rival.rank);
    }
    return found;
}

} // namespace veltrix
