// SPDX-License-Identifier: GPL-3.0-or-later
// One process a data folder.
#pragma once

#include "effects/file_lock.h"

#include <QObject>

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

class QLocalServer;

namespace veltrix
{

/// Holds a data folder for this process, so that no second one writes the same state, and lets a
/// second start ask the first to show itself. Any thread may take the folder and ask whether it is
/// held; the rest belongs to the object's own.
class DataFolderLock final : public QObject
{
    Q_OBJECT

public:
    using Outcome = FileLock::Outcome;

    explicit DataFolderLock(QString folder, QObject *parent = nullptr);
    ~DataFolderLock() override;

    /// Tries to take the folder, and from then on listens for other starts: on another thread than
    /// the object's, as soon as that runs its event loop. When the folder is held already, looks
    /// whether the lock still stands in it: its file may have been removed and the folder moved,
    /// and then it is taken again. To be called before each save.
    Outcome acquire();

    /// Whether the folder was this process's at the last look.
    [[nodiscard]] bool isHeld() const;
    /// That a second start cannot be noticed, and why, in words for the user; empty when it can.
    [[nodiscard]] std::optional<QString> warning() const;

    /// Asks the process that has the folder to show its window. True when it has answered; waits at
    /// most `patience`, without an event loop.
    [[nodiscard]] bool askOwnerToRaise(std::chrono::milliseconds patience) const;

Q_SIGNALS:
    /// Another start of the program asks this one to show its window.
    void raiseRequested();

private:
    void listen();
    void answerNextConnection();
    [[nodiscard]] QString lockPath() const;
    [[nodiscard]] QString ownServerName() const;
    [[nodiscard]] QString ownersServerName() const;

    [[nodiscard]] std::optional<Outcome> outcome() const;

    QString m_folder;
    mutable std::mutex m_mutex;
    // Under the mutex.
    FileLock m_lock;
    std::optional<Outcome> m_outcome;
    /// Closed before the lock is freed: a next owner may listen under the same name.
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace veltrix
