// SPDX-License-Identifier: GPL-3.0-or-later
// Refuses requests beyond a number a minute, as the real search service does.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <mutex>

namespace veltrix::sample
{

/// Safe to use from several threads at once.
class Throttle
{
public:
    using Clock = std::chrono::steady_clock;

    /// Lets `perMinute` requests through in any 60 seconds; 0 or less lets all through.
    explicit Throttle(int perMinute, std::function<Clock::time_point()> now = &Clock::now);

    /// Whether a request that comes now is let through. A refused one does not count.
    bool admits();

private:
    int m_perMinute;
    std::function<Clock::time_point()> m_now;
    std::mutex m_mutex;
    std::deque<Clock::time_point> m_admitted;
};

} // namespace veltrix::sample
