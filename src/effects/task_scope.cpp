// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/task_scope.h"

#include <QtDebug>

namespace veltrix
{

struct TaskScope::Counter {
    int running = 0;
};

TaskScope::TaskScope() : m_counter(std::make_shared<Counter>()) {}

TaskScope::~TaskScope()
{
    m_stop.request_stop();
    if (m_counter->running != 0)
        qCritical("%d task(s) outlived their owner", m_counter->running);
}

std::stop_token TaskScope::token() const
{
    return m_stop.get_token();
}

void TaskScope::own(Task<void> task)
{
    watch(std::move(task), m_counter);
}

void TaskScope::stop()
{
    // The fresh source comes first: a task that is stopped may start its successor.
    std::stop_source stopped = std::exchange(m_stop, std::stop_source());
    stopped.request_stop();
}

int TaskScope::runningTasks() const
{
    return m_counter->running;
}

Task<void> TaskScope::watch(Task<void> task, std::shared_ptr<Counter> counter)
{
    ++counter->running;
    try {
        co_await task;
    } catch (const Cancelled &) {
        // Stopping is how a task normally ends early.
    } catch (const std::exception &error) {
        qCritical("A task failed without handling it: %s", error.what());
    }
    --counter->running;
}

ScopedStop::ScopedStop(const TaskScope &scope, const std::stop_token &callersStop)
    : m_counter(scope.m_counter), m_onScopesStop(scope.token(), m_source),
      m_onCallersStop(callersStop, m_source)
{
    ++m_counter->running;
}

ScopedStop::~ScopedStop()
{
    --m_counter->running;
}

} // namespace veltrix
