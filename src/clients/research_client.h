// SPDX-License-Identifier: GPL-3.0-or-later
// Keyword searches through the research service.
#pragma once

#include "clients/http.h"
#include "clients/ranked_apps_cache.h"
#include "clients/supabase_configuration.h"
#include "effects/clock.h"
#include "effects/itunes_client_protocol.h"
#include "effects/ranked_apps_saving.h"
#include "effects/task_scope.h"

#include <memory>

namespace veltrix
{

/// The research service cannot answer; the text says what to do.
class ResearchError final : public Error
{
public:
    explicit ResearchError(QString message) : Error(std::move(message)) {}
    /// The text that is shown to the user.
    [[nodiscard]] const QString &message() const { return description(); }
};

/// Answers `search` from the research service and forwards `lookup`. The service may say that it is
/// still working or that it is asked too often: a call waits and asks again, at most four times and
/// never beginning a wait that ends 45 seconds or more after its start.
///
/// Answers are served again for half an hour, and kept for lists of ranked apps. Dates before which
/// the service must not be asked live in memory only and are shared by all calls; one that a clock
/// set back has moved further away than it ever was is ignored.
class ResearchClient final : public ITunesClientProtocol, public RankedAppsSaving
{
public:
    /// How long an answer is served without asking again.
    static constexpr Seconds freshness = rankedAppsFreshness;
    /// How long after its start a call may still begin to wait.
    static constexpr Seconds patience{45};
    static constexpr int mostAttempts = 4;
    /// Time-out of one request.
    static constexpr Seconds requestTimeout{15};
    /// The wait when the service names none.
    static constexpr Seconds defaultRetryDelay{10};
    static constexpr qsizetype mostResults = 100;
    static constexpr qsizetype longestKeyword = 100;

    struct Arguments {
        /// Asked at each search; its error passes unchanged.
        ConfigurationProvider configuration;
        HttpSend send;
        std::shared_ptr<Clock> clock;
        /// Answers `lookup`.
        std::shared_ptr<ITunesClientProtocol> lookup;
        RankedAppsCache::Arguments cache = {};
    };

    explicit ResearchClient(Arguments arguments);
    ~ResearchClient() override;

    /// Ranked apps for a keyword, best first. Throws ResearchError, the configuration's error,
    /// TransportError, or Cancelled, also when the client goes first.
    Task<QList<ITunesAppResult>> search(QString term, QString country, std::int64_t limit,
                                        std::stop_token stop) override;
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t trackId, QString country,
                                                std::stop_token stop) override;

    [[nodiscard]] Task<std::optional<SavedResults>>
    savedResults(QString keyword, QString country, std::stop_token callersStop) override;

private:
    struct State;

    Task<void> passGate(QString key, Date deadline, std::stop_token stop);

    std::unique_ptr<State> m_state;
    TaskScope m_tasks;
};

} // namespace veltrix
