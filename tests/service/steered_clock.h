// SPDX-License-Identifier: GPL-3.0-or-later
// The real clock, with a hand on its waits.
#pragma once

#include "effects/system_clock.h"

#include <cmath>
#include <functional>
#include <vector>

namespace veltrix
{

/// Notes each wait, and lets the test act while somebody waits; a wait may be left out, as if it
/// had passed in no time.
class SteeredClock final : public Clock
{
public:
    enum class Waits { Real, LeftOut };

    /// What happens at the beginning of a wait, by its number from 1.
    std::function<Waits(std::size_t number)> onWait = [](std::size_t) {
        return Waits::Real;
    };

    /// The lengths of all waits so far, in whole seconds.
    [[nodiscard]] const std::vector<int> &waits() const { return m_waits; }

    [[nodiscard]] Date now() const override { return m_clock.now() + m_leftOut; }

    Task<void> sleep(Seconds duration, std::stop_token stop) override
    {
        m_waits.push_back(static_cast<int>(std::lround(duration.count())));
        if (onWait(m_waits.size()) == Waits::LeftOut) {
            m_leftOut += duration;
            co_return;
        }
        co_await m_clock.sleep(duration, stop);
    }

private:
    SystemClock m_clock;
    Seconds m_leftOut{0};
    std::vector<int> m_waits;
};

} // namespace veltrix
