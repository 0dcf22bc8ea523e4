// SPDX-License-Identifier: GPL-3.0-or-later
// The wall clock and the timers of the event loop.
#pragma once

#include "effects/clock.h"

namespace veltrix
{

/// The clock of the program. now() follows every change of the system's time.
class SystemClock final : public Clock
{
public:
    [[nodiscard]] Date now() const override;
    Task<void> sleep(Seconds duration, std::stop_token stop) override;
};

} // namespace veltrix
