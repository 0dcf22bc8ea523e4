// SPDX-License-Identifier: GPL-3.0-or-later
// Refreshing while the window is in use.
#pragma once

#include "effects/clock.h"
#include "effects/task_scope.h"
#include "store/refresh_progress.h"

#include <functional>
#include <optional>

namespace veltrix
{

/// While active: refreshes, waits an hour, refreshes, and so on. A change to active starts with a
/// refresh at once, a change to inactive stops what runs. The wait is shorter when a ranking
/// becomes stale before the hour is over: otherwise each would be measured up to an hour later
/// every day, until the day on which the window is closed before its turn.
///
/// After a failure the wait is a minute, and doubles up to the hour with every further refresh that
/// failed before it had measured anything. The count outlives a change of activity: who leaves the
/// window and returns gets the refresh at once that every return brings, and no shorter waits after
/// it.
///
/// A wait also ends when the machine wakes: when the wall clock has run ahead of it.
class RefreshLoop
{
public:
    static constexpr Seconds interval{3'600};
    static constexpr Seconds leastWait{60};
    /// How often a wait compares itself with the wall clock, and by how much that must have run
    /// ahead for the machine to have slept.
    static constexpr Seconds clockCheck{60};

    using Refresh = std::function<Task<HistoryRefresh>(std::stop_token stop)>;

    /// `refresh` handles its own failures. When it ends with Cancelled by itself, the user has
    /// stopped it, as if by stopRefresh(). `clock` must outlive the loop.
    RefreshLoop(Clock &clock, Refresh refresh);
    ~RefreshLoop();

    void setActive(bool active);
    [[nodiscard]] bool isActive() const { return m_active; }

    /// Stops a refresh that is running and rests: the next comes after an hour, whatever happens
    /// meanwhile, unless resume() is called.
    void stopRefresh();
    /// Ends such a rest. What comes next comes when it would have come without it.
    void resume();
    /// What made refreshes fail may be over, as when the network returns: after a failure the next
    /// comes at once.
    void retrySoon();
    /// A refresh has ended that somebody else had started. When it failed, the next comes as after
    /// one of the loop's own.
    void refreshEnded(const HistoryRefresh &end);

private:
    Task<void> run(std::stop_token stop);
    Task<void> rest(std::stop_token stop);
    Task<Seconds> refreshOnce(std::stop_token stop);
    Task<void> wait(Seconds duration, std::stop_token stop);
    [[nodiscard]] Seconds waitAfter(const HistoryRefresh &end);
    [[nodiscard]] Seconds restLeft() const;

    Clock &m_clock;
    Refresh m_refresh;
    bool m_active = false;
    /// Failures in a row.
    int m_failures = 0;
    std::optional<Date> m_restUntil;
    bool m_isRefreshing = false;
    /// retrySoon() was called while a refresh was running.
    bool m_hasNewChance = false;
    /// What a wait that was interrupted goes on as.
    std::optional<Seconds> m_nextWait;
    // Parts of the loop that can be stopped without it.
    TaskScope m_refreshing;
    TaskScope m_waiting;
    TaskScope m_resting;
    TaskScope m_tasks;
};

} // namespace veltrix
