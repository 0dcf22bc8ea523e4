// SPDX-License-Identifier: GPL-3.0-or-later
// Refreshing while the window is in use.
#pragma once

#include "effects/clock.h"
#include "effects/task_scope.h"

#include <functional>

namespace veltrix
{

/// While active: refreshes, waits an hour, refreshes, and so on. Every change of activity stops
/// what runs and, when it is a change to active, starts with a refresh at once.
class RefreshLoop
{
public:
    static constexpr Seconds interval{3'600};

    using Refresh = std::function<Task<void>(std::stop_token stop)>;

    /// `refresh` handles its own failures. `clock` must outlive the loop.
    RefreshLoop(Clock &clock, Refresh refresh);
    ~RefreshLoop();

    void setActive(bool active);
    [[nodiscard]] bool isActive() const { return m_active; }

    /// Stops a refresh that is running; the next comes after the hour.
    void stopRefresh();

private:
    Task<void> run(std::stop_token stop);
    Task<void> refreshOnce(std::stop_token stop);

    Clock &m_clock;
    Refresh m_refresh;
    bool m_active = false;
    std::stop_source m_refreshStop;
    TaskScope m_tasks;
};

} // namespace veltrix
