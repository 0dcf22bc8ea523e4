// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/data_folder_lock.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <QtDebug>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace veltrix
{

namespace
{

constexpr QByteArrayView raiseRequest{"raise\n"};
constexpr QByteArrayView raiseAnswer{"raised\n"};

} // namespace

DataFolderLock::DataFolderLock(QString folder, QObject *parent)
    : QObject(parent), m_folder(std::move(folder))
{
}

DataFolderLock::~DataFolderLock()
{
    m_server.reset();
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

DataFolderLock::Outcome DataFolderLock::acquire()
{
    if (m_descriptor >= 0)
        return Outcome::Acquired;
    const QByteArray path = QFile::encodeName(lockPath());
    int descriptor = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0)
        descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return Outcome::Unavailable;
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        const bool held = errno == EWOULDBLOCK;
        ::close(descriptor);
        return held ? Outcome::HeldByAnother : Outcome::Unavailable;
    }
    m_descriptor = descriptor;
    listen();
    return Outcome::Acquired;
}

void DataFolderLock::listen()
{
    const QString name = ownServerName();
    // A name left by a crash is nobody's: whoever had it held the lock that is now ours.
    QLocalServer::removeServer(name);
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server.get(), &QLocalServer::newConnection, this,
            &DataFolderLock::answerNextConnection);
    if (!m_server->listen(name)) {
        // The folder is still protected; a second start just cannot raise this one's window.
        qWarning("Cannot listen for other starts: %s", qUtf8Printable(m_server->errorString()));
        m_server.reset();
        return;
    }
    // The lock file says where, so that a start in another session finds this one.
    const QByteArray content = m_server->fullServerName().toUtf8();
    if (::ftruncate(m_descriptor, 0) != 0 ||
        ::pwrite(m_descriptor, content.constData(), size_t(content.size()), 0) != content.size())
        qWarning("Cannot write %s", qUtf8Printable(lockPath()));
}

void DataFolderLock::answerNextConnection()
{
    QLocalSocket *socket = m_server->nextPendingConnection();
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    const auto answer = [this, socket] {
        if (socket->bytesAvailable() < raiseRequest.size())
            return;
        const bool isRequest = socket->read(raiseRequest.size()) == raiseRequest;
        if (isRequest)
            socket->write(raiseAnswer.data(), raiseAnswer.size());
        socket->disconnectFromServer();
        if (isRequest)
            Q_EMIT raiseRequested();
    };
    connect(socket, &QLocalSocket::readyRead, this, answer);
    answer();
}

bool DataFolderLock::askOwnerToRaise(std::chrono::milliseconds patience) const
{
    const QDeadlineTimer deadline(patience);
    const auto remaining = [&] {
        return int(deadline.remainingTime());
    };
    // The owner may be starting itself and not listen yet, so this asks until time is up.
    do {
        QLocalSocket socket;
        socket.connectToServer(ownersServerName());
        if (socket.waitForConnected(remaining())) {
            socket.write(raiseRequest.data(), raiseRequest.size());
            while (socket.bytesAvailable() < raiseAnswer.size() &&
                   socket.waitForReadyRead(remaining())) {
            }
            if (socket.read(raiseAnswer.size()) == raiseAnswer)
                return true;
        }
        QThread::msleep(20);
    } while (!deadline.hasExpired());
    return false;
}

QString DataFolderLock::lockPath() const
{
    return m_folder + QStringLiteral("/.veltrix.lock");
}

QString DataFolderLock::ownServerName() const
{
    // Socket names are limited to about a hundred bytes, folders are not.
    const QByteArray folder = QFile::encodeName(QFileInfo(m_folder).canonicalFilePath());
    const QByteArray hash = QCryptographicHash::hash(folder, QCryptographicHash::Sha256).toHex();
    return QStringLiteral("%1/veltrix-%2")
        .arg(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation),
             QString::fromLatin1(hash.left(16)));
}

QString DataFolderLock::ownersServerName() const
{
    QFile file(lockPath());
    constexpr qint64 longestName = 1024;
    if (file.open(QIODevice::ReadOnly)) {
        const QString name = QString::fromUtf8(file.read(longestName));
        if (!name.isEmpty())
            return name;
    }
    return ownServerName();
}

} // namespace veltrix
