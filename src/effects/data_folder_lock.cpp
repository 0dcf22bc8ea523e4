// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/data_folder_lock.h"

#include "effects/data_locations.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QMetaMethod>
#include <QThread>
#include <QtDebug>

namespace veltrix
{

namespace
{

/// A view may follow it, after a space.
const QByteArray raiseRequest = QByteArrayLiteral("raise");
const QByteArray raiseAnswer = QByteArrayLiteral("raised\n");
const QByteArray roomAnswer = QByteArrayLiteral("making room\n");
const QByteArray wishAnswer = QByteArrayLiteral("taken\n");
/// A wish is a short line; what is longer is none.
constexpr qint64 longestWish = 65'536;

} // namespace

DataFolderLock::DataFolderLock(QString folder, QObject *parent)
    : QObject(parent), m_folder(std::move(folder))
{
}

DataFolderLock::~DataFolderLock() = default;

DataFolderLock::Outcome DataFolderLock::acquire()
{
    Outcome outcome = Outcome::Acquired;
    {
        const std::scoped_lock locked(m_mutex);
        if (m_lock.isStillAt(lockPath())) {
            m_outcome = outcome;
            return outcome;
        }
        FileLock lock;
        outcome = lock.acquire(lockPath());
        // The first look may have failed by chance, and the other is this one.
        const bool wasOurs = outcome == Outcome::HeldByAnother && m_lock.isStillAt(lockPath());
        m_outcome = wasOurs ? Outcome::Acquired : outcome;
        if (outcome != Outcome::Acquired)
            return *m_outcome;
        m_lock = std::move(lock);
    }
    // The server's sockets belong to the object's thread.
    if (QThread::currentThread() == thread())
        listen();
    else
        QMetaObject::invokeMethod(this, &DataFolderLock::listen, Qt::QueuedConnection);
    return outcome;
}

DataFolderLock::Outcome DataFolderLock::acquireWithin(std::chrono::milliseconds patience)
{
    const QDeadlineTimer deadline(patience);
    Outcome outcome = acquire();
    while (outcome == Outcome::HeldByAnother && !deadline.hasExpired()) {
        QThread::msleep(20);
        outcome = acquire();
    }
    return outcome;
}

std::optional<DataFolderLock::Outcome> DataFolderLock::outcome() const
{
    const std::scoped_lock locked(m_mutex);
    return m_outcome;
}

bool DataFolderLock::isHeld() const
{
    return outcome() == Outcome::Acquired;
}

bool DataFolderLock::isHeldByAnother() const
{
    return outcome() == Outcome::HeldByAnother;
}

std::optional<QString> DataFolderLock::warning() const
{
    const auto found = outcome();
    if (found == Outcome::Unsupported) {
        return QStringLiteral("The disk of “%1” has no file locks, so Veltrix cannot notice when "
                              "it is started a second time on the same data.")
            .arg(m_folder);
    }
    if (found == Outcome::Unavailable) {
        return QStringLiteral("“%1” could not be locked, so Veltrix cannot notice when it is "
                              "started a second time on the same data.")
            .arg(m_folder);
    }
    return std::nullopt;
}

void DataFolderLock::listen()
{
    // Nobody listens under the name of a folder that was held before.
    m_server.reset();
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
    const std::scoped_lock locked(m_mutex);
    if (!m_lock.write(content))
        qWarning("Cannot write %s", qUtf8Printable(lockPath()));
}

void DataFolderLock::answerNextConnection()
{
    QLocalSocket *socket = m_server->nextPendingConnection();
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] { answer(socket); });
    answer(socket);
}

void DataFolderLock::answer(QLocalSocket *socket)
{
    if (!socket->canReadLine()) {
        if (socket->bytesAvailable() > longestWish)
            socket->abort();
        return;
    }
    const QByteArray line = socket->readLine();
    disconnect(socket, &QLocalSocket::readyRead, this, nullptr);
    const bool takesWishes =
        isSignalConnected(QMetaMethod::fromSignal(&DataFolderLock::wishReceived));
    if (line.startsWith(raiseRequest)) {
        socket->write(m_makesRoom ? roomAnswer : raiseAnswer);
        // Whoever hears of it may let the folder go, and with it the socket.
        socket->flush();
        socket->disconnectFromServer();
        Q_EMIT raiseRequested(line.mid(raiseRequest.size()).trimmed());
    } else if (takesWishes && line.startsWith('{')) {
        socket->write(wishAnswer);
        Q_EMIT wishReceived(new FolderGuest(socket, line.chopped(1)));
    } else {
        socket->disconnectFromServer();
    }
}

/// The connection over which the owner has begun to answer; null when it does not.
std::unique_ptr<QLocalSocket> DataFolderLock::askOwnerFor(const QByteArray &line,
                                                          std::chrono::milliseconds patience) const
{
    const QDeadlineTimer deadline(patience);
    const auto remaining = [&] {
        return int(deadline.remainingTime());
    };
    // The owner may be starting itself and not listen yet, so this asks until time is up.
    do {
        auto socket = std::make_unique<QLocalSocket>();
        socket->connectToServer(ownersServerName());
        if (socket->waitForConnected(remaining())) {
            socket->write(line);
            while (!socket->canReadLine() && socket->waitForReadyRead(remaining())) {
            }
            if (socket->canReadLine())
                return socket;
        }
        QThread::msleep(20);
    } while (!deadline.hasExpired());
    return nullptr;
}

DataFolderLock::OwnersAnswer DataFolderLock::askOwnerToRaise(std::chrono::milliseconds patience,
                                                             const QByteArray &view) const
{
    const QByteArray request = view.isEmpty() ? raiseRequest : raiseRequest + ' ' + view;
    const auto socket = askOwnerFor(request + '\n', patience);
    const QByteArray answer = socket ? socket->readLine() : QByteArray();
    if (answer == raiseAnswer)
        return OwnersAnswer::Raised;
    return answer == roomAnswer ? OwnersAnswer::MakesRoom : OwnersAnswer::None;
}

std::unique_ptr<FolderOwner> DataFolderLock::askOwner(const QByteArray &wish,
                                                      std::chrono::milliseconds patience) const
{
    auto socket = askOwnerFor(wish + '\n', patience);
    if (!socket || socket->readLine() != wishAnswer)
        return nullptr;
    return std::make_unique<FolderOwner>(std::move(socket));
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
    return QStringLiteral("%1/veltrix-%2").arg(runtimeFolder(), QString::fromLatin1(hash.left(16)));
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
