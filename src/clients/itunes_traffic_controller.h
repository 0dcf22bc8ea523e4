// SPDX-License-Identifier: GPL-3.0-or-later
// Paces every request to the iTunes services and keeps their answers for half an hour.
#pragma once

#include "clients/response_cache.h"
#include "effects/clock.h"
#include "effects/task_scope.h"

#include <memory>
#include <optional>

namespace veltrix
{

/// A token bucket with a least spacing, and a cache of bodies by request URL. One controller serves
/// the whole process: the composition root creates it and hands it to every ITunesClient, so that
/// all of them draw on one budget. It knows nothing of HTTP: a request that failed has spent its
/// permit all the same.
class ITunesTrafficController
{
public:
    /// The most permits that the bucket holds; it starts full.
    static constexpr double permitCapacity = 5.0;
    /// Time in which one whole permit is regained.
    static constexpr Seconds refillInterval{4.5};
    /// Least time between two permits.
    static constexpr Seconds minimumSpacing{0.35};
    /// How long an answer is kept.
    static constexpr Seconds cacheTTL{1800.0};
    /// The most bytes of answers that are kept; some seventy searches of a hundred apps.
    static constexpr qint64 cacheCapacity = 64LL * 1024 * 1024;

    explicit ITunesTrafficController(std::shared_ptr<Clock> clock);

    /// The body kept under `key`, unless it has expired. An expired one is removed.
    [[nodiscard]] std::optional<QByteArray> cachedResponse(const QString &key);

    /// Waits until a request may be sent, and accounts for it. Throws Cancelled, without spending a
    /// permit, when stopped or when the controller goes. There is no queue: of several who wait,
    /// whoever wakes first goes first.
    Task<void> acquirePermit(std::stop_token callersStop);

    /// Keeps the body of a successful answer for cacheTTL, unless newer ones need its room.
    void storeResponse(QByteArray data, const QString &key);

    /// Bytes of answers that are kept now.
    [[nodiscard]] qint64 cachedBytes() const { return m_cache.size(); }

private:
    void refill(Date now);
    [[nodiscard]] Seconds waitForPermit(Date now) const;

    std::shared_ptr<Clock> m_clock;
    std::optional<Date> m_lastRequestAt;
    Date m_lastRefillAt;
    double m_permits = permitCapacity;
    ResponseCache m_cache{cacheTTL, cacheCapacity};
    TaskScope m_tasks;
};

} // namespace veltrix
