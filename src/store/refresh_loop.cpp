// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/refresh_loop.h"

#include <algorithm>
#include <cmath>

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
    m_restUntil = m_clock.now() + interval;
    m_refreshing.stop();
    m_waiting.stop();
}

void RefreshLoop::resume()
{
    m_restUntil.reset();
    m_resting.stop();
}

void RefreshLoop::retrySoon()
{
    if (m_isRefreshing)
        m_hasNewChance = true;
    else if (m_failures > 0)
        m_waiting.stop();
}

void RefreshLoop::refreshEnded(const HistoryRefresh &end)
{
    // While the loop refreshes it waits for the same end.
    if (m_isRefreshing || !end.failure)
        return;
    m_nextWait = waitAfter(end);
    m_waiting.stop();
}

Task<void> RefreshLoop::run(std::stop_token stop)
{
    for (;;) {
        co_await rest(stop);
        Seconds next = co_await refreshOnce(stop);
        while (next > Seconds::zero() && restLeft() == Seconds::zero()) {
            m_nextWait.reset();
            co_await wait(next, stop);
            next = std::exchange(m_nextWait, std::nullopt).value_or(Seconds::zero());
        }
    }
}

Seconds RefreshLoop::restLeft() const
{
    if (!m_restUntil)
        return Seconds::zero();
    // A clock that was set back must not make the rest longer than it is at its longest.
    return std::clamp(*m_restUntil - m_clock.now(), Seconds::zero(), interval);
}

Task<void> RefreshLoop::rest(std::stop_token stop)
{
    const ScopedStop restStop(m_resting, stop);
    Seconds left = restLeft();
    while (left > Seconds::zero()) {
        const Seconds step = std::min(left, clockCheck);
        try {
            co_await m_clock.sleep(step, restStop);
        } catch (const Cancelled &) {
            throwIfStopped(stop);
        }
        left = std::min(left - step, restLeft());
    }
    m_restUntil.reset();
}

Task<Seconds> RefreshLoop::refreshOnce(std::stop_token stop)
{
    // A stop of the loop stops the refresh, but a stop of the refresh leaves the loop.
    const ScopedStop refreshStop(m_refreshing, stop);
    m_hasNewChance = false;
    m_isRefreshing = true;
    std::optional<HistoryRefresh> end;
    try {
        end = co_await m_refresh(refreshStop);
    } catch (const Cancelled &) {
        // Said below.
    }
    m_isRefreshing = false;
    throwIfStopped(stop);
    if (!end) {
        if (!m_restUntil)
            m_restUntil = m_clock.now() + interval;
        co_return Seconds::zero();
    }
    if (std::exchange(m_hasNewChance, false))
        m_failures = 0;
    co_return waitAfter(*end);
}

Seconds RefreshLoop::waitAfter(const HistoryRefresh &end)
{
    if (!end.failure) {
        m_failures = 0;
        if (!end.nextStale)
            return interval;
        return std::clamp(*end.nextStale - m_clock.now(), leastWait, interval);
    }
    m_failures = end.measured > 0 ? 1 : m_failures + 1;
    return std::min(interval, leastWait * std::exp2(m_failures - 1));
}

Task<void> RefreshLoop::wait(Seconds duration, std::stop_token stop)
{
    const ScopedStop waitStop(m_waiting, stop);
    Seconds left = duration;
    while (left > Seconds::zero()) {
        const Seconds step = std::min(left, clockCheck);
        const Date before = m_clock.now();
        try {
            co_await m_clock.sleep(step, waitStop);
        } catch (const Cancelled &) {
            // Interrupted: what comes next is decided by who did it.
            throwIfStopped(stop);
            co_return;
        }
        if (m_clock.now() - before > step + clockCheck)
            co_return;
        left -= step;
    }
}

} // namespace veltrix
