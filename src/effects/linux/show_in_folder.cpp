// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/show_in_folder.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>

#include <chrono>

namespace veltrix
{

namespace
{

/// The bus may have to start the file manager first.
constexpr std::chrono::milliseconds patience{5'000};

} // namespace

void showInFolder(const QString &path, std::function<void(const QUrl &)> openFolder,
                  const QString &busName)
{
    const QDBusConnection bus =
        busName.isEmpty() ? QDBusConnection::sessionBus() : QDBusConnection(busName);
    const QUrl folder = QUrl::fromLocalFile(QFileInfo(path).absolutePath());
    if (!bus.isConnected()) {
        openFolder(folder);
        return;
    }
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    const QString address = QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
    question << QStringList{address} << QString();
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(question, int(patience.count())));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [watcher, folder, open = std::move(openFolder)] {
                         const QDBusPendingReply<> reply = *watcher;
                         watcher->deleteLater();
                         if (reply.isError())
                             open(folder);
                     });
}

} // namespace veltrix
