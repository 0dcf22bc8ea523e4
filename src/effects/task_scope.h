// SPDX-License-Identifier: GPL-3.0-or-later
// The owner of running tasks.
#pragma once

#include "effects/task.h"

#include <memory>
#include <stop_token>

namespace veltrix
{

/// Stops `source` when `outer` is stopped, for as long as this lives.
class StopLink
{
public:
    StopLink(const std::stop_token &outer, std::stop_source source)
        : m_onStop(outer, Forward{std::move(source)})
    {
    }

private:
    struct Forward {
        std::stop_source source;
        void operator()() const
        {
            // What is stopped may destroy this link, so the source is kept until it has ended.
            std::stop_source kept = source;
            kept.request_stop();
        }
    };
    std::stop_callback<Forward> m_onStop;
};

/// Owns the tasks of an object: those that it has started, and those that others await. Declare it
/// as the object's last member: its destructor stops every task while the other members still live,
/// and each has ended when it returns.
///
/// A task that ends with Cancelled ends silently. A task must handle its own failures; one that
/// lets an Error escape is a programming error and is reported on the error output.
class TaskScope
{
public:
    TaskScope();
    ~TaskScope();
    TaskScope(const TaskScope &) = delete;
    TaskScope &operator=(const TaskScope &) = delete;

    /// The token to start tasks with.
    [[nodiscard]] std::stop_token token() const;

    /// Takes over a task that was started with token().
    void own(Task<void> task);

    /// Stops all tasks; tasks that are started afterwards run under a fresh token.
    void stop();

    /// Tasks that have not ended.
    [[nodiscard]] int runningTasks() const;

private:
    friend class ScopedStop;
    struct Counter;
    static Task<void> watch(Task<void> task, std::shared_ptr<Counter> counter);

    std::shared_ptr<Counter> m_counter;
    std::stop_source m_stop;
};

/// Makes a coroutine that a caller awaits under a token of his own a task of its object: declared
/// before its first wait, this is the token for everything that it waits for. It stops with the
/// caller's token and with the scope, so the object lives whenever the coroutine runs on.
///
///     Task<int> Client::ask(QString what, std::stop_token callersStop)
///     {
///         const ScopedStop stop(m_tasks, callersStop);
///         co_await m_clock->sleep(m_pause, stop);
///
/// A caller that gets Cancelled ends without touching the object, which may be gone.
class ScopedStop
{
public:
    ScopedStop(const TaskScope &scope, const std::stop_token &callersStop);
    ~ScopedStop();
    ScopedStop(const ScopedStop &) = delete;
    ScopedStop &operator=(const ScopedStop &) = delete;

    // NOLINTNEXTLINE(google-explicit-constructor): it is used as the token that it stands for.
    operator std::stop_token() const { return m_source.get_token(); }

private:
    std::shared_ptr<TaskScope::Counter> m_counter;
    std::stop_source m_source;
    StopLink m_onScopesStop;
    StopLink m_onCallersStop;
};

} // namespace veltrix
