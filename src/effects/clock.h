// SPDX-License-Identifier: GPL-3.0-or-later
// Time as an injected effect.
#pragma once

#include "effects/task.h"
#include "model/date.h"

namespace veltrix
{

/// Tells the time and waits. The program has one SystemClock; tests turn a virtual one by hand.
class Clock
{
public:
    Clock() = default;
    virtual ~Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;

    [[nodiscard]] virtual Date now() const = 0;

    /// Ends after `duration`, rounded up to the next nanosecond; at once when it is not positive.
    /// Throws Cancelled as soon as `stop` is asked for.
    virtual Task<void> sleep(Seconds duration, std::stop_token stop) = 0;
};

/// `duration` in whole nanoseconds, rounded up, so that no positive wait becomes a wait of zero.
/// Waits of more than 2^62 nanoseconds (146 years) count as that long; not-a-number counts as zero.
std::chrono::nanoseconds roundedUpToNanoseconds(Seconds duration);

} // namespace veltrix
