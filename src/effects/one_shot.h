// SPDX-License-Identifier: GPL-3.0-or-later
// The leaf of every wait: one value that arrives later, or a stop that arrives first.
#pragma once

#include "effects/task.h"

#include <coroutine>
#include <exception>
#include <memory>
#include <stop_token>
#include <utility>
#include <variant>

namespace veltrix
{

/// One result, delivered once from the main thread to one awaiting coroutine. A stop resumes the
/// coroutine at once, inside request_stop(), with Cancelled: so when a TaskScope has been destroyed
/// none of its coroutines is left suspended, and none can touch an owner that is gone.
///
/// Copies share the state; a producer may outlive the coroutine that waited.
template <class T>
class OneShot
{
public:
    OneShot() : m_state(std::make_shared<State>()) {}

    /// Delivers the result. Ignored when one was delivered before or the wait was stopped.
    void resolve(T value) const { deliver(Result(std::in_place_index<1>, std::move(value))); }
    /// Delivers a failure, under the same rule.
    void fail(std::exception_ptr error) const
    {
        deliver(Result(std::in_place_index<2>, std::move(error)));
    }

    /// True until a result was delivered or the wait was stopped.
    [[nodiscard]] bool isOpen() const { return m_state->open; }

    /// Awaits the result; throws Cancelled when `stop` comes first. May be awaited once.
    [[nodiscard]] auto wait(std::stop_token stop) const
    {
        return Awaiter(m_state, std::move(stop));
    }

private:
    using Result = std::variant<std::monostate, T, std::exception_ptr>;

    struct State {
        Result result;
        std::coroutine_handle<> waiter;
        bool open = true;
    };

    void deliver(Result result) const
    {
        if (!m_state->open)
            return;
        m_state->open = false;
        m_state->result = std::move(result);
        // The coroutine may destroy this OneShot, so the state is kept until it has been resumed.
        const std::shared_ptr<State> keep = m_state;
        if (const auto waiter = std::exchange(keep->waiter, {}))
            waiter.resume();
    }

    class Awaiter
    {
    public:
        Awaiter(std::shared_ptr<State> state, std::stop_token stop)
            : m_state(std::move(state)), m_stop(std::move(stop))
        {
        }

        [[nodiscard]] bool await_ready() const noexcept
        {
            return !m_state->open || m_stop.stop_requested();
        }

        void await_suspend(std::coroutine_handle<> handle)
        {
            m_state->waiter = handle;
            m_onStop = std::make_unique<std::stop_callback<StopWait>>(m_stop, StopWait{m_state});
        }

        T await_resume()
        {
            // A stop wins only over a result that has not arrived.
            if (m_state->result.index() == 0) {
                m_state->open = false;
                throw Cancelled();
            }
            if (m_state->result.index() == 2)
                std::rethrow_exception(std::get<2>(m_state->result));
            return std::move(std::get<1>(m_state->result));
        }

    private:
        struct StopWait {
            std::shared_ptr<State> state;
            void operator()() const
            {
                state->open = false;
                // Resuming destroys this callback, so nothing of it is touched afterwards.
                if (const auto waiter = std::exchange(state->waiter, {}))
                    waiter.resume();
            }
        };

        std::shared_ptr<State> m_state;
        std::stop_token m_stop;
        // On the heap because awaiters are moved into the coroutine and callbacks cannot move.
        std::unique_ptr<std::stop_callback<StopWait>> m_onStop;
    };

    std::shared_ptr<State> m_state;
};

/// The value of a OneShot that only says "done".
struct Done {
};

} // namespace veltrix
