// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/folder_talk.h"

#include <QLocalSocket>

#include <utility>

namespace veltrix
{

FolderGuest::FolderGuest(QLocalSocket *socket, QByteArray wish)
    : m_socket(socket), m_wish(std::move(wish))
{
    m_socket->setParent(this);
    connect(m_socket, &QLocalSocket::disconnected, this, [this] {
        Q_EMIT left();
        deleteLater();
    });
    connect(m_socket, &QLocalSocket::bytesWritten, this, [this] {
        if (m_socket->bytesToWrite() > 0)
            return;
        if (const auto waiting = std::exchange(m_waitingForSent, std::nullopt))
            waiting->resolve({});
    });
}

void FolderGuest::answer(const QByteArray &line)
{
    m_socket->write(line + '\n');
    // The program may end before the event loop comes to it.
    m_socket->flush();
}

Task<void> FolderGuest::sent(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (m_socket->bytesToWrite() == 0)
        co_return;
    const OneShot<Done> all = m_waitingForSent.emplace();
    co_await all.wait(stop);
}

void FolderGuest::end()
{
    m_socket->disconnectFromServer();
}

FolderOwner::FolderOwner(std::unique_ptr<QLocalSocket> socket) : m_socket(std::move(socket)) {}

FolderOwner::~FolderOwner() = default;

void FolderOwner::listen()
{
    connect(m_socket.get(), &QLocalSocket::readyRead, this, &FolderOwner::readLines);
    connect(m_socket.get(), &QLocalSocket::disconnected, this, [this] {
        readLines();
        Q_EMIT ended();
    });
    readLines();
    if (m_socket->state() != QLocalSocket::ConnectedState)
        Q_EMIT ended();
}

void FolderOwner::readLines()
{
    while (m_socket->canReadLine()) {
        QByteArray line = m_socket->readLine();
        line.chop(1);
        Q_EMIT answered(line);
    }
}

} // namespace veltrix
