// SPDX-License-Identifier: GPL-3.0-or-later
// Refuses requests beyond a number a minute.
#include "sample/throttle.h"

#include <utility>

namespace veltrix::sample
{

Throttle::Throttle(int perMinute, std::function<Clock::time_point()> now)
    : m_perMinute(perMinute), m_now(std::move(now))
{
}

bool Throttle::admits()
{
    if (m_perMinute <= 0)
        return true;
    const std::lock_guard lock(m_mutex);
    const Clock::time_point now = m_now();
    while (!m_admitted.empty() && now - m_admitted.front() >= std::chrono::minutes(1))
        m_admitted.pop_front();
    if (m_admitted.size() >= static_cast<std::size_t>(m_perMinute))
        return false;
    m_admitted.push_back(now);
    return true;
}

} // namespace veltrix::sample
