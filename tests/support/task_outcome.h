// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a task in a test and says how it ended.
#pragma once

#include "effects/one_shot.h"
#include "model/error.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <memory>
#include <optional>

namespace veltrix
{

/// Turns the event loop until the condition holds; a failure of the test when it never does.
template <class Condition>
void waitFor(Condition condition, std::chrono::milliseconds most = std::chrono::seconds(20))
{
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < most.count())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    EXPECT_TRUE(condition()) << "it did not happen in time";
}

/// A task without a result, of which somebody only wants to know when it is done.
inline Task<Done> finished(Task<void> task)
{
    co_await task;
    co_return Done();
}

/// How a task ended, or that it has not.
template <class T>
class Outcome
{
public:
    explicit Outcome(Task<T> task) : m_state(std::make_shared<State>())
    {
        watch(std::move(task), m_state);
    }

    [[nodiscard]] bool isDone() const { return m_state->isDone; }
    [[nodiscard]] bool hasValue() const { return m_state->value.has_value(); }

    /// The result; throws what the task threw.
    [[nodiscard]] const T &value() const
    {
        if (m_state->error)
            std::rethrow_exception(m_state->error);
        return m_state->value.value();
    }

    [[nodiscard]] bool isCancelled() const { return holds<Cancelled>(); }

    template <class E>
    [[nodiscard]] bool holds() const
    {
        if (!m_state->error)
            return false;
        try {
            std::rethrow_exception(m_state->error);
        } catch (const E &) {
            return true;
        } catch (...) {
            return false;
        }
    }

    /// The text that the user would read; "cancelled", "running" or "succeeded" when there is none.
    [[nodiscard]] QString failureText() const
    {
        if (!m_state->isDone)
            return QStringLiteral("running");
        if (!m_state->error)
            return QStringLiteral("succeeded");
        try {
            std::rethrow_exception(m_state->error);
        } catch (const Error &error) {
            return error.description();
        } catch (const std::exception &error) {
            return QString::fromUtf8(error.what());
        }
    }

    /// Turns the event loop until the task has ended.
    Outcome &wait(std::chrono::milliseconds most = std::chrono::seconds(20))
    {
        waitFor([this] { return isDone(); }, most);
        return *this;
    }

private:
    struct State {
        std::optional<T> value;
        std::exception_ptr error;
        bool isDone = false;
    };

    static Task<void> watch(Task<T> task, std::shared_ptr<State> state)
    {
        try {
            state->value = co_await task;
        } catch (...) {
            state->error = std::current_exception();
        }
        state->isDone = true;
    }

    std::shared_ptr<State> m_state;
};

} // namespace veltrix
