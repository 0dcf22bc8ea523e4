// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/virtual_clock.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace veltrix
{

VirtualClock::VirtualClock(Date start) : m_start(start) {}

VirtualClock::~VirtualClock() = default;

Date VirtualClock::now() const
{
    return m_start + Seconds(m_elapsed);
}

Task<void> VirtualClock::sleep(Seconds duration, std::stop_token stop)
{
    throwIfStopped(stop);
    const Nanoseconds wait = roundedUpToNanoseconds(duration);
    if (wait.count() <= 0)
        co_return;
    const OneShot<Done> wake;
    m_sleepers.emplace(m_elapsed + wait, wake);
    co_await wake.wait(stop);
}

void VirtualClock::advance(Seconds duration)
{
    const Nanoseconds end = m_elapsed + roundedUpToNanoseconds(duration);
    for (;;) {
        dropStopped();
        const auto next = m_sleepers.begin();
        if (next == m_sleepers.end() || next->first > end)
            break;
        const OneShot<Done> wake = next->second;
        m_elapsed = std::max(m_elapsed, next->first);
        m_sleepers.erase(next);
        wake.resolve({});
    }
    m_elapsed = std::max(m_elapsed, end);
}

bool VirtualClock::advanceToNextWake()
{
    dropStopped();
    const auto next = m_sleepers.begin();
    if (next == m_sleepers.end())
        return false;
    const OneShot<Done> wake = next->second;
    m_elapsed = std::max(m_elapsed, next->first);
    m_sleepers.erase(next);
    wake.resolve({});
    return true;
}

void VirtualClock::runUntilIdle(int mostWakes)
{
    for (int wakes = 0; wakes < mostWakes; ++wakes) {
        if (!advanceToNextWake())
            return;
    }
    ADD_FAILURE() << "still asleep after " << mostWakes << " wake-ups";
}

void VirtualClock::jumpTo(Date date)
{
    m_start = date - Seconds(m_elapsed);
}

int VirtualClock::sleepers() const
{
    dropStopped();
    return static_cast<int>(m_sleepers.size());
}

void VirtualClock::dropStopped() const
{
    std::erase_if(m_sleepers, [](const auto &entry) { return !entry.second.isOpen(); });
}

} // namespace veltrix
