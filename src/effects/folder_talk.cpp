// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/folder_talk.h"

#include <QLocalSocket>

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
}

void FolderGuest::answer(const QByteArray &line)
{
    m_socket->write(line + '\n');
    // The program may end before the event loop comes to it.
    m_socket->flush();
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
