// SPDX-License-Identifier: GPL-3.0-or-later
// One process a data folder.
#pragma once

#include "effects/file_lock.h"
#include "effects/folder_talk.h"

#include <QObject>

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>

class QLocalServer;

namespace veltrix
{

/// Holds a data folder for this process, so that no second one writes the same state, and lets a
/// second start ask the first to show itself, or to do something for it. Any thread may take the
/// folder and ask whether it is held; the rest belongs to the object's own.
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
    /// The same, as soon as another start has freed the folder. Waits at most `patience`, without
    /// an event loop.
    Outcome acquireWithin(std::chrono::milliseconds patience);

    /// Whether the folder was this process's at the last look.
    [[nodiscard]] bool isHeld() const;
    /// Whether it was another's.
    [[nodiscard]] bool isHeldByAnother() const;
    /// That a second start cannot be noticed, and why, in words for the user; empty when it can.
    [[nodiscard]] std::optional<QString> warning() const;

    /// This process has no window: when another start asks for it, it ends to make room.
    void makeRoomWhenAsked() { m_makesRoom = true; }

    enum class OwnersAnswer {
        /// Its window is in front now.
        Raised,
        /// It has no window and frees the folder.
        MakesRoom,
        None,
    };
    /// Asks the process that has the folder to show its window. Waits at most `patience`, without
    /// an event loop.
    /// `view` is what the window is to show, a word; empty for what it shows.
    [[nodiscard]] OwnersAnswer askOwnerToRaise(std::chrono::milliseconds patience,
                                               const QByteArray &view = {}) const;

    /// Sends a line to the process that has the folder. Null when it does not take it within
    /// `patience`; waits without an event loop.
    [[nodiscard]] std::unique_ptr<FolderOwner> askOwner(const QByteArray &wish,
                                                        std::chrono::milliseconds patience) const;

Q_SIGNALS:
    /// Another start of the program asks this one to show its window, or to make room. `view` is a
    /// word for what the window is to show; empty for what it shows.
    void raiseRequested(const QByteArray &view);
    /// Another start wants something else. When nobody listens to this, it gets no answer.
    void wishReceived(FolderGuest *guest);

private:
    void listen();
    void answerNextConnection();
    void answer(QLocalSocket *socket);
    [[nodiscard]] std::unique_ptr<QLocalSocket>
    askOwnerFor(const QByteArray &line, std::chrono::milliseconds patience) const;
    [[nodiscard]] QString lockPath() const;
    [[nodiscard]] QString ownServerName() const;
    [[nodiscard]] QString ownersServerName() const;

    [[nodiscard]] std::optional<Outcome> outcome() const;

    QString m_folder;
    mutable std::mutex m_mutex;
    // Under the mutex.
    FileLock m_lock;
    std::optional<Outcome> m_outcome;

    bool m_makesRoom = false;
    /// Closed before the lock is freed: a next owner may listen under the same name.
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace veltrix
