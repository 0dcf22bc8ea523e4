// SPDX-License-Identifier: GPL-3.0-or-later
// Saves the state on a thread of its own.
#pragma once

#include "effects/one_shot.h"
#include "effects/task_scope.h"
#include "store/state_file.h"

#include <QObject>

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace veltrix
{

/// What is handed over after a change.
struct StateChange {
    /// All there is now.
    PersistedState state;
    /// Dates what is kept aside.
    Date now;
};

/// Owns the state file. One save runs and one waits: a newer state takes the place of the one that
/// waits, so that what is saved is never far behind, however slow the disk is.
///
/// The saving thread touches the file while anything is handed over that it has not saved, and the
/// main thread only when there is nothing of that kind. All else here belongs to the main thread.
class StateSaver final : public QObject
{
    Q_OBJECT

public:
    /// `lock` holds the file's folder; it is looked at before each save, and may be null.
    explicit StateSaver(QString path, DataFolderLock *lock = nullptr, QObject *parent = nullptr);
    /// Ends when all that was handed over was saved, or could not be.
    ~StateSaver() override;

    /// StateFile::load(), on the calling thread.
    PersistedState load();
    /// StateFile::beginAnew(), on the calling thread.
    bool beginAnew(Date now);
    /// StateFile::tryFolderAgain(), on the calling thread, when nothing is being saved.
    void tryFolderAgain();
    /// StateFile::dismissNotices(), at once or after the save that is running.
    void dismissNotices();

    /// Hands a state over. Copies no record and waits for nothing; saved() follows.
    void save(StateChange change);
    /// Ends when all that was handed over before was saved, or could not be; then
    /// hasUnsavedChange() says which.
    Task<void> finished(std::stop_token stop);
    /// The same without an event loop, for the end of the program. saved() is emitted within.
    void waitUntilFinished();

    // As of the last save that has ended.
    [[nodiscard]] const std::optional<PersistenceProblem> &problem() const
    {
        return m_told.problem;
    }
    [[nodiscard]] bool isRead() const { return m_told.isRead; }
    [[nodiscard]] bool hasUnsavedChange() const { return m_told.hasUnsavedChange; }

Q_SIGNALS:
    /// A save has ended, well or not.
    void saved();

private:
    /// What the file has to tell, by value.
    struct Told {
        std::optional<PersistenceProblem> problem;
        bool isRead = false;
        bool hasUnsavedChange = false;
        /// The number of the last state that was tried.
        std::uint64_t tried = 0;
    };
    struct Waiting {
        std::uint64_t number = 0;
        OneShot<Done> ended;
    };

    [[nodiscard]] Told look(std::uint64_t tried) const;
    [[nodiscard]] bool isIdle() const { return m_told.tried == m_handedOver; }
    void work();
    void saveNext(StateChange change, std::uint64_t number);
    void takeResult();

    StateFile m_file;
    Told m_told;
    std::uint64_t m_handedOver = 0;
    std::vector<Waiting> m_waiting;

    // Shared with the saving thread under the mutex.
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::optional<StateChange> m_next;
    std::uint64_t m_nextNumber = 0;
    std::optional<Told> m_result;
    bool m_dismisses = false;
    bool m_ends = false;

    /// Started by the first save.
    std::thread m_thread;
    TaskScope m_tasks;
};

} // namespace veltrix
