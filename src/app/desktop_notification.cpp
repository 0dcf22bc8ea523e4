// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop_notification.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace veltrix
{

namespace
{

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = QStringLiteral("org.freedesktop.Notifications");
/// What a click on the notification itself is called.
const QString defaultAction = QStringLiteral("default");

QDBusMessage call(const char *method)
{
    return QDBusMessage::createMethodCall(service, path, interface, QString::fromLatin1(method));
}

} // namespace

DesktopNotification::DesktopNotification(QDBusConnection bus, QObject *parent)
    : QObject(parent), m_bus(std::move(bus))
{
    const auto follow = [this](const char *signal, const char *slot) {
        m_bus.connect(service, path, interface, QString::fromLatin1(signal), this, slot);
    };
    follow("ActionInvoked", SLOT(actionInvoked(uint, QString)));
    follow("ActivationToken", SLOT(activationTokenReceived(uint, QString)));
    follow("NotificationClosed", SLOT(notificationClosed(uint, uint)));
}

void DesktopNotification::show(const QString &title, const QString &text)
{
    m_title = title;
    m_text = text;
    askCapabilities();
}

void DesktopNotification::askCapabilities()
{
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call("GetCapabilities")), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QStringList> reply = *watcher;
        watcher->deleteLater();
        if (reply.isValid())
            notify(reply.value());
        else
            Q_EMIT closed();
    });
}

void DesktopNotification::notify(const QStringList &capabilities)
{
    m_canBeOpened = capabilities.contains(QStringLiteral("actions"));
    // Titles are plain text everywhere.
    const bool hasMarkup = capabilities.contains(QStringLiteral("body-markup"));
    QStringList actions;
    if (m_canBeOpened)
        actions = {defaultAction, QStringLiteral("Open Veltrix")};
    QDBusMessage message = call("Notify");
    message << QStringLiteral("Veltrix") << uint(0) << QStringLiteral("veltrix") << m_title
            << (hasMarkup ? m_text.toHtmlEscaped() : m_text) << actions
            << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("veltrix")}} << -1;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        take(watcher->reply());
    });
}

void DesktopNotification::take(const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
        m_id = reply.arguments().constFirst().toUInt();
    if (m_id == 0 || !m_canBeOpened)
        Q_EMIT closed();
}

void DesktopNotification::actionInvoked(uint id, const QString &action)
{
    if (id == m_id && action == defaultAction)
        Q_EMIT opened(m_token);
}

void DesktopNotification::activationTokenReceived(uint id, const QString &token)
{
    if (id == m_id)
        m_token = token;
}

void DesktopNotification::notificationClosed(uint id, uint)
{
    if (id == m_id)
        Q_EMIT closed();
}

} // namespace veltrix
