// SPDX-License-Identifier: GPL-3.0-or-later
// A clock that tests turn by hand: pacing, deadlines and daily rules run in no time at all.
#pragma once

#include "effects/clock.h"
#include "effects/one_shot.h"

#include <chrono>

namespace veltrix
{

/// Time stands still until advance() moves it. Sleepers wake in the order of their times, each at
/// its own moment, so that what they do in turn (sleeping again, say) happens at the right time.
class VirtualClock final : public Clock
{
public:
    /// Starts on 2026-11-21T12:00:00Z unless told otherwise.
    explicit VirtualClock(Date start = dateFromUnixSeconds(1795262400));
    ~VirtualClock() override;

    [[nodiscard]] Date now() const override;
    Task<void> sleep(Seconds duration, std::stop_token stop) override;

    /// Moves the time on, waking everyone whose time comes.
    void advance(Seconds duration);
    /// Moves to the next wake-up and wakes that sleeper; false when nobody sleeps.
    bool advanceToNextWake();
    /// Wakes sleepers until none is left. Fails the test after `mostWakes`, which is a spin.
    void runUntilIdle(int mostWakes = 1'000'000);
    /// Sets the wall clock without waking anyone: a jump, also backwards.
    void jumpTo(Date date);

    [[nodiscard]] int sleepers() const;

private:
    using Nanoseconds = std::chrono::nanoseconds;

    void dropStopped() const;

    Date m_start;
    Nanoseconds m_elapsed{0};
    mutable std::multimap<Nanoseconds, OneShot<Done>> m_sleepers;
};

} // namespace veltrix
