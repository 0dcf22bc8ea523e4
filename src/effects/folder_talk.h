// SPDX-License-Identifier: GPL-3.0-or-later
// What two starts of the program on one data folder say to each other: lines of text, both ways.
#pragma once

#include "effects/one_shot.h"
#include "effects/task_scope.h"

#include <QByteArray>
#include <QObject>

#include <memory>
#include <optional>

class QLocalSocket;

namespace veltrix
{

/// Another start that wants something of this one, which has the folder.
class FolderGuest final : public QObject
{
    Q_OBJECT

public:
    /// Takes the socket. Deletes itself when the connection ends.
    FolderGuest(QLocalSocket *socket, QByteArray wish);

    [[nodiscard]] const QByteArray &wish() const { return m_wish; }
    /// Sends a line, given without its end.
    void answer(const QByteArray &line);
    /// Ends when the other start, or the system for it, has taken all that was answered.
    Task<void> sent(std::stop_token stop);
    /// Ends the connection when all has been sent.
    void end();

Q_SIGNALS:
    /// The other start has ended, or was answered to the end.
    void left();

private:
    QLocalSocket *m_socket;
    QByteArray m_wish;
    std::optional<OneShot<Done>> m_waitingForSent;
    TaskScope m_tasks;
};

/// The process that has the folder, for a start that wants something of it.
class FolderOwner final : public QObject
{
    Q_OBJECT

public:
    /// Takes a connected socket.
    explicit FolderOwner(std::unique_ptr<QLocalSocket> socket);
    ~FolderOwner() override;

    /// Reads what has come already, and from then on whatever comes.
    void listen();

Q_SIGNALS:
    /// A line, without its end.
    void answered(const QByteArray &line);
    /// Nothing more will come.
    void ended();

private:
    void readLines();

    std::unique_ptr<QLocalSocket> m_socket;
};

} // namespace veltrix
