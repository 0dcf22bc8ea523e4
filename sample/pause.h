// SPDX-License-Identifier: GPL-3.0-or-later
// Waits of slow answers, which end at once when the services stop.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace veltrix::sample
{

class Pause
{
public:
    /// How late an answer to the command "slow" is.
    static constexpr std::chrono::seconds slowness{3};

    /// Waits that long, or until end() is called; after end() it does not wait at all.
    void wait(std::chrono::milliseconds duration)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, duration, [this] { return m_ended; });
    }

    void end()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_ended = true;
        }
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_ended = false;
};

} // namespace veltrix::sample
