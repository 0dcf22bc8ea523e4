// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/system_clock.h"

#include "effects/one_shot.h"

#include <QTimer>

#include <algorithm>
#include <cmath>

namespace veltrix
{

std::chrono::nanoseconds roundedUpToNanoseconds(Seconds duration)
{
    constexpr double longest = 4611686018427387904.0; // 2^62
    const double nanoseconds = std::ceil(duration.count() * 1e9);
    if (!(nanoseconds > 0))
        return std::chrono::nanoseconds(0);
    return std::chrono::nanoseconds(static_cast<std::int64_t>(std::min(nanoseconds, longest)));
}

Date SystemClock::now() const
{
    const auto sinceUnixEpoch = std::chrono::system_clock::now().time_since_epoch();
    return dateFromUnixSeconds(Seconds(sinceUnixEpoch).count());
}

Task<void> SystemClock::sleep(Seconds duration, std::stop_token stop)
{
    throwIfStopped(stop);
    auto remaining = std::chrono::ceil<std::chrono::milliseconds>(roundedUpToNanoseconds(duration));
    // A timer counts milliseconds in an int, so a very long wait is a chain of timers.
    constexpr std::chrono::milliseconds longestTimer = std::chrono::hours(24);
    while (remaining.count() > 0) {
        const auto step = std::min(remaining, longestTimer);
        remaining -= step;
        const OneShot<Done> elapsed;
        QTimer timer;
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, &timer, [elapsed] { elapsed.resolve({}); });
        timer.start(step);
        co_await elapsed.wait(stop);
    }
}

} // namespace veltrix
