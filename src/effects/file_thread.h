// SPDX-License-Identifier: GPL-3.0-or-later
// A thread for files, so that no window waits for a disk.
#pragma once

#include "effects/one_shot.h"
#include "effects/task_scope.h"

#include <QObject>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace veltrix
{

/// Reads and writes files on a thread of its own, one piece of work at a time. What somebody waits
/// for comes first, in the order in which it was asked for. What is only to be on the disk in the
/// end comes behind it, and a newer version takes the place of the one that waits, so that a slow
/// disk never falls far behind.
///
/// Work is freed where it was done. The rest here belongs to the object's own thread.
class FileThread final : public QObject
{
public:
    using Work = std::function<void()>;

    FileThread() = default;
    /// Ends when all that was handed over is done, whatever it takes; whoever still waits for an
    /// answer gets Cancelled.
    ~FileThread() override;

    /// Does what somebody waits for, unless he stops waiting before its turn. Gives what it gives
    /// and throws what it throws.
    template <class T>
    Task<T> run(std::function<T()> work, std::stop_token callersStop)
    {
        const ScopedStop stop(m_tasks, callersStop);
        const OneShot<T> result;
        const std::stop_token token = stop;
        start([this, token, result, work = std::move(work)] {
            if (!token.stop_requested())
                tell(answerOf(work, result));
        });
        co_return co_await result.wait(stop);
    }
    /// The same where nobody waits for an answer. Nothing may be thrown out of it.
    void start(Work work);
    /// Writes a file, or what is counted as one, in the place of a waiting write to the same path.
    /// Nothing may be thrown out of it.
    void save(const QString &path, Work work);

    /// Until all of it is done, for the end of the program and its like. Without an event loop.
    void waitUntilFinished();

private:
    struct Save {
        QString path;
        Work work;
    };

    /// What the object's own thread is to do with what has come of the work.
    template <class T>
    static Work answerOf(const std::function<T()> &work, OneShot<T> result)
    {
        try {
            return [result, value = std::make_shared<T>(work())] {
                result.resolve(std::move(*value));
            };
        } catch (...) {
            return [result, error = std::current_exception()] {
                result.fail(error);
            };
        }
    }

    void wake();
    void runThread();
    void tell(Work news);
    void takeNews();

    // Shared under the mutex.
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Work> m_asked;
    std::deque<Save> m_saves;
    std::vector<Work> m_news;
    bool m_isBusy = false;
    bool m_ends = false;

    /// Started by the first work.
    std::thread m_thread;
    TaskScope m_tasks;
};

} // namespace veltrix
