// SPDX-License-Identifier: GPL-3.0-or-later
// One process a data folder.
#pragma once

#include <QLocalServer>
#include <QObject>

#include <chrono>
#include <memory>

namespace veltrix
{

/// Holds a data folder for this process, so that no second one writes the same state, and lets a
/// second start ask the first to show itself. The lock belongs to an open file: however the process
/// ends, the kernel frees it, and nothing stale is left that could block the next start.
class DataFolderLock final : public QObject
{
    Q_OBJECT

public:
    enum class Outcome {
        /// The folder is this process's until the lock is destroyed.
        Acquired,
        /// Another process has it.
        HeldByAnother,
        /// The folder cannot hold a lock: it is missing or read-only, so saves will fail too.
        Unavailable,
    };

    explicit DataFolderLock(QString folder, QObject *parent = nullptr);
    ~DataFolderLock() override;

    /// Tries to take the folder, and from then on listens for other starts.
    Outcome acquire();

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

    QString m_folder;
    int m_descriptor = -1;
    /// Closed before the lock is freed: a next owner may listen under the same name.
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace veltrix
