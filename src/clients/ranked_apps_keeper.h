// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps what keyword searches find where no research service does.
#pragma once

#include "clients/ranked_apps_cache.h"
#include "effects/clock.h"
#include "effects/itunes_client_protocol.h"
#include "effects/ranked_apps_saving.h"
#include "effects/task_scope.h"

#include <memory>

namespace veltrix
{

/// Searches and looks up through another client and keeps the answers in the file of ranked apps,
/// by the same keys and limits as ResearchClient. Only whole answers are kept: a search for fewer
/// than mostResults knows nothing of the rest. Of a listing only what a list of apps shows is kept,
/// because its description alone is most of it. Fails as the other client does, or with Cancelled,
/// also when the keeper goes first.
class RankedAppsKeeper final : public ITunesClientProtocol, public RankedAppsSaving
{
public:
    static constexpr qsizetype mostResults = 100;
    /// For so long the same answer may be the one that the other client remembers, so it keeps its
    /// date.
    static constexpr Seconds remembered{1'800};

    struct Arguments {
        std::shared_ptr<ITunesClientProtocol> client;
        std::shared_ptr<Clock> clock;
        RankedAppsCache::Arguments cache = {};
    };

    explicit RankedAppsKeeper(Arguments arguments);

    Task<QList<ITunesAppResult>> search(QString term, QString country, std::int64_t limit,
                                        std::stop_token stop) override;
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t trackId, QString country,
                                                std::stop_token stop) override;

    [[nodiscard]] Task<std::optional<SavedResults>>
    savedResults(QString keyword, QString country, std::stop_token callersStop) override;

private:
    std::shared_ptr<ITunesClientProtocol> m_client;
    std::shared_ptr<Clock> m_clock;
    RankedAppsCache m_cache;
    TaskScope m_tasks;
};

} // namespace veltrix
