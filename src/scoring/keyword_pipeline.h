// SPDX-License-Identifier: GPL-3.0-or-later
// One measurement of one keyword, from the search to the finished snapshot.
#pragma once

#include "effects/clock.h"
#include "effects/itunes_client_protocol.h"
#include "model/app_profile.h"
#include "model/keyword_snapshot.h"
#include "model/tracked_keyword.h"
#include "scoring/popularity_providing.h"

#include <memory>

namespace veltrix
{

/// Version of the difficulty, competition and opportunity models; a snapshot made under another
/// version is stale.
inline constexpr QLatin1String currentScoringModelVersion{"quorvin-opportunity-v1"};

/// What a snapshot says of its popularity when the provider failed.
inline constexpr QLatin1String popularityUnavailable{
    "Popularity unavailable. Rankings were saved; try popularity again later."};

/// Search results asked for in a run.
inline constexpr std::int64_t keywordSearchLimit = 100;

/// One measurement, and what it was made of.
struct KeywordMeasurement {
    KeywordSnapshot snapshot;
    /// Best first, as the search gave them.
    QList<ITunesAppResult> results;
};

/// Measures keywords: searches, finds the app, runs the models. Keeps no state between runs, so
/// runs may overlap; a run holds its own copy of the collaborators and may outlive the pipeline.
struct KeywordPipeline {
    std::shared_ptr<PopularityProviding> popularityProvider;
    std::shared_ptr<ITunesClientProtocol> iTunesClient;
    std::shared_ptr<Clock> clock;

    /// Measures `keyword` for `app`: a complete snapshot with an id of its own, the keyword's id,
    /// and the moment right after the search had answered. Throws the search's error unchanged; a
    /// failure of the popularity provider only leaves popularity and opportunity out.
    [[nodiscard]] Task<KeywordMeasurement> run(TrackedKeyword keyword, AppProfile app,
                                               std::stop_token stop) const;
};

} // namespace veltrix
