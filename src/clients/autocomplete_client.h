// SPDX-License-Identifier: GPL-3.0-or-later
// How visible a keyword is while a user still types it.
#pragma once

#include "clients/autocomplete_state.h"
#include "clients/http.h"
#include "effects/autocomplete_observing.h"
#include "effects/autocomplete_suggesting.h"
#include "effects/clock.h"
#include "effects/file_thread.h"
#include "effects/task_scope.h"
#include "model/autocomplete_evidence.h"

#include <memory>

namespace veltrix
{

/// Version of the visibility model.
inline constexpr QLatin1String autocompleteModelVersion{"autocomplete-visibility-v2"};

/// Asks Apple's search-hints service what it suggests for prefixes of a keyword. Requests are few,
/// one after another and spaced, 200 a day at most; answers are kept for a day; when the service
/// refuses or cannot be reached, it is left alone for a while. State is kept in a file, written
/// after each request and score; what no rule reads any more is left out.
///
/// Evidence is an extra: whatever goes wrong only makes it smaller.
///
/// Suggestions for what somebody types share all of this: pace, kept answers, the requests of the
/// day. A run and those who type go by turns, so each request of a run waits for at most one that
/// was typed, however many are. Requests are spaced by their beginnings: one without an answer
/// holds nobody else up.
class AutocompleteClient final : public AutocompleteObserving, public AutocompleteSuggesting
{
public:
    using State = AutocompleteState;
    using Hints = AutocompleteHints;
    using DailyScore = AutocompleteDailyScore;

    /// Requests allowed on one UTC day.
    static constexpr std::int64_t dailyLimit = 200;
    /// Least time between two requests.
    static constexpr Seconds interval{1};
    /// Answers younger than this are used again, unless they are empty.
    static constexpr Seconds cacheLifetime{86'400};
    /// How long the service is left alone after it refused, unless it asks for longer.
    static constexpr Seconds blockTime{900};
    /// The longest that it may ask for.
    static constexpr Seconds longestBlock{86'400};
    /// How long it is left alone after this many requests in a row had no answer that it gives, so
    /// that nobody waits for one time-out after the other.
    static constexpr Seconds pauseTime{600};
    static constexpr int failuresBeforePause = 2;
    /// How far ahead of the clock an answer may be dated that is used again.
    static constexpr Seconds clockTolerance{300};
    /// Time-out of one request.
    static constexpr Seconds requestTimeout{10};
    /// Largest answer, in bytes.
    static constexpr qint64 bodyLimit = 1024 * 1024;

    struct Arguments {
        HttpSend send;
        std::shared_ptr<Clock> clock;
        /// The state file; empty means memory only. It is read once, by the first run.
        QString persistencePath;
        QUrl hintsURL = defaultHintsURL();
        /// Writes the file; needed where there is one.
        std::shared_ptr<FileThread> files = {};
    };

    /// Where Apple's service is.
    static QUrl defaultHintsURL();

    explicit AutocompleteClient(Arguments arguments);
    ~AutocompleteClient() override;

    /// Probes a keyword and scores the day. At the first request that fails, is refused or is not
    /// allowed any more, the run ends with the probes that it has; a day is scored only when all of
    /// them were made, one of them at least on that day. Nothing when there is neither a probe nor
    /// an earlier score: the storefront has no number, requests are blocked, or another run is
    /// under way. `possibleBrand` is left to the caller. Throws Cancelled and nothing else, also
    /// when the client goes first.
    Task<std::optional<AutocompleteEvidence>> observe(QString keyword, QString country,
                                                      std::stop_token stop) override;

    /// Where the service cannot be asked now, the suggestions that it made for other prefixes in
    /// the last day and that begin with this one.
    Task<std::optional<QStringList>> suggest(QString prefix, QString country,
                                             std::stop_token stop) override;

    [[nodiscard]] const State &state();

private:
    struct Core;
    enum class Asker { Run, Typist };

    Task<std::optional<Hints>> fetch(QString prefix, QString country, Asker asker,
                                     std::stop_token stop);
    /// Waits until a request may be sent; false when none may.
    Task<bool> awaitTurn(Asker asker, std::stop_token stop);

    std::unique_ptr<Core> m_core;
    TaskScope m_runs;
    TaskScope m_typing;
};

/// The suggestions in an answer of the service, best first. Throws PropertyListError when it is not
/// one.
QStringList parseSearchHints(const QByteArray &body);

} // namespace veltrix
