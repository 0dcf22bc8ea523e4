// SPDX-License-Identifier: GPL-3.0-or-later
// The owner of running tasks.
#pragma once

#include "effects/task.h"

#include <memory>
#include <stop_token>

namespace veltrix
{

/// Owns the tasks that an object has started. Declare it as the object's last member: its
/// destructor stops every task while the other members still live, and each has ended when it
/// returns.
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
    struct Counter;
    static Task<void> watch(Task<void> task, std::shared_ptr<Counter> counter);

    std::shared_ptr<Counter> m_counter;
    std::stop_source m_stop;
};

} // namespace veltrix
