// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/itunes_traffic_controller.h"

#include <algorithm>

namespace veltrix
{

ITunesTrafficController::ITunesTrafficController(std::shared_ptr<Clock> clock)
    : m_clock(std::move(clock)), m_lastRefillAt(m_clock->now())
{
}

std::optional<QByteArray> ITunesTrafficController::cachedResponse(const QString &key)
{
    return m_cache.find(key, m_clock->now());
}

Task<void> ITunesTrafficController::acquirePermit(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    for (;;) {
        throwIfStopped(stop);
        const Date now = m_clock->now();
        refill(now);
        const Seconds wait = waitForPermit(now);
        if (wait <= Seconds::zero()) {
            m_permits -= 1;
            m_lastRequestAt = now;
            co_return;
        }
        // Others may take permits during the sleep, so everything is worked out afresh after it.
        co_await m_clock->sleep(wait, stop);
    }
}

void ITunesTrafficController::storeResponse(QByteArray data, const QString &key)
{
    m_cache.store(key, std::move(data), m_clock->now());
}

void ITunesTrafficController::refill(Date now)
{
    // A clock that went backwards adds nothing, and must not hold requests back until it has caught
    // up.
    const Seconds elapsed = std::max(Seconds::zero(), now - m_lastRefillAt);
    m_permits = std::min(m_permits + elapsed / refillInterval, permitCapacity);
    m_lastRefillAt = now;
    if (m_lastRequestAt && *m_lastRequestAt > now)
        m_lastRequestAt = now;
}

Seconds ITunesTrafficController::waitForPermit(Date now) const
{
    Seconds wait = Seconds::zero();
    if (m_lastRequestAt)
        wait = std::max(wait, *m_lastRequestAt + minimumSpacing - now);
    if (m_permits < 1)
        wait = std::max(wait, (1 - m_permits) * refillInterval);
    return wait;
}

} // namespace veltrix
