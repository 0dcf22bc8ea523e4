// SPDX-License-Identifier: GPL-3.0-or-later
// One task that several wait for.
#pragma once

#include "effects/one_shot.h"
#include "effects/task_scope.h"

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace veltrix
{

/// Runs at most one task at a time; whoever asks while it runs joins it and gets the same end. It
/// belongs to this object, not to whoever asked first: each of them waits under a token of his own,
/// and the task is stopped only when nobody waits for it any more.
///
/// For those who wait, Cancelled means one of two things: their own token was stopped, or the task
/// was (by stop(), or because this object is gone). Either way they end without touching whatever
/// owned it. What else a task can end in is a value of T or an Error.
template <class T>
class SharedTask
{
public:
    using Start = std::function<Task<T>(std::stop_token stop)>;

    /// True while there is a task to join.
    [[nodiscard]] bool isRunning() const { return m_run && !m_run->stop.stop_requested(); }
    /// True when nothing of a task is left, so that this object may go without stopping any.
    [[nodiscard]] bool isSettled() const { return m_tasks.runningTasks() == 0; }

    /// Joins the task, or starts one when none is running. Safe to be left behind: the object may
    /// go while somebody waits.
    Task<T> join(Start start, std::stop_token stop)
    {
        throwIfStopped(stop);
        const OneShot<T> result;
        const bool isFirst = !isRunning();
        if (isFirst)
            m_run = std::make_shared<Run>();
        const std::shared_ptr<Run> run = m_run;
        run->waiting.push_back(result);
        if (isFirst)
            m_tasks.own(work(run, std::move(start), m_tasks.token()));
        try {
            co_return co_await result.wait(stop);
        } catch (const Cancelled &) {
            // From here on only the run may be touched: this object may be gone.
            leave(*run);
            throw;
        }
    }

    /// Stops the task; everyone who waits for it gets Cancelled.
    void stop()
    {
        const std::shared_ptr<Run> run = m_run;
        if (run)
            run->stop.request_stop();
    }

private:
    struct Run {
        std::stop_source stop;
        std::vector<OneShot<T>> waiting;
        bool hasEnded = false;
    };

    static void leave(Run &run)
    {
        std::erase_if(run.waiting, [](const OneShot<T> &result) { return !result.isOpen(); });
        if (run.waiting.empty() && !run.hasEnded)
            run.stop.request_stop();
    }

    Task<void> work(std::shared_ptr<Run> run, Start start, std::stop_token stop)
    {
        const StopLink onOwnersEnd(stop, run->stop);
        std::optional<T> value;
        std::exception_ptr failure;
        try {
            Task<T> task = start(run->stop.get_token());
            value = co_await task;
        } catch (...) {
            failure = std::current_exception();
        }
        run->hasEnded = true;
        if (m_run == run)
            m_run.reset();
        // Whoever is told may do anything, join the next task among it.
        for (const OneShot<T> &result : std::exchange(run->waiting, {})) {
            if (value)
                result.resolve(*value);
            else
                result.fail(failure);
        }
    }

    std::shared_ptr<Run> m_run;
    TaskScope m_tasks;
};

/// A SharedTask for each key.
template <class Key, class T>
class SharedTasks
{
public:
    using Start = typename SharedTask<T>::Start;

    /// Joins the task of that key, or starts one, as SharedTask::join() does.
    Task<T> join(const Key &key, Start start, std::stop_token stop)
    {
        std::erase_if(m_tasks, [&key](const auto &entry) {
            return entry.first != key && entry.second.isSettled();
        });
        return m_tasks[key].join(std::move(start), std::move(stop));
    }

private:
    std::map<Key, SharedTask<T>> m_tasks;
};

} // namespace veltrix
