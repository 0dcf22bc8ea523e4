// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/refresh_loop.h"

namespace veltrix
{

RefreshLoop::RefreshLoop(Clock &clock, Refresh refresh)
    : m_clock(clock), m_refresh(std::move(refresh))
{
}

RefreshLoop::~RefreshLoop() = default;

void RefreshLoop::setActive(bool active)
{
    if (m_active == active)
        return;
    m_active = active;
    m_tasks.stop();
    if (m_active)
        m_tasks.own(run(m_tasks.token()));
}

void RefreshLoop::stopRefresh()
{
    m_refreshStop.request_stop();
}

Task<void> RefreshLoop::run(std::stop_token stop)
{
    for (;;) {
        co_await refreshOnce(stop);
        co_await m_clock.sleep(interval, stop);
    }
}

Task<void> RefreshLoop::refreshOnce(std::stop_token stop)
{
    // A stop of the loop stops the refresh, but a stop of the refresh leaves the loop.
    m_refreshStop = std::stop_source();
    std::stop_source refreshStop = m_refreshStop;
    auto forward = [refreshStop]() mutable {
        refreshStop.request_stop();
    };
    const std::stop_callback onStop(stop, forward);
    try {
        co_await m_refresh(refreshStop.get_token());
    } catch (const Cancelled &) {
        throwIfStopped(stop);
    }
}

} // namespace veltrix
