// SPDX-License-Identifier: GPL-3.0-or-later
// One notification of the desktop, and what becomes of it.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

class QDBusMessage;

namespace veltrix
{

/// Shows a notification through the desktop's notification service, and follows it until it is
/// closed.
class DesktopNotification final : public QObject
{
    Q_OBJECT

public:
    /// `bus` is the session's, except in tests.
    explicit DesktopNotification(QDBusConnection bus = QDBusConnection::sessionBus(),
                                 QObject *parent = nullptr);

    /// Shows plain text; lines are parted by line feeds.
    void show(const QString &title, const QString &text);

Q_SIGNALS:
    /// The user wants to see more. `activationToken` lets a window come to the front; empty where
    /// the desktop gives none.
    void opened(const QString &activationToken);
    /// It is gone, or could not be shown, or nothing more will be heard of it.
    void closed();

private Q_SLOTS:
    void actionInvoked(uint id, const QString &action);
    void activationTokenReceived(uint id, const QString &token);
    void notificationClosed(uint id, uint reason);

private:
    void askCapabilities();
    void notify(const QStringList &capabilities);
    void take(const QDBusMessage &reply);

    QDBusConnection m_bus;
    QString m_title;
    QString m_text;
    QString m_token;
    /// 0 while it is not shown.
    uint m_id = 0;
    bool m_canBeOpened = false;
};

} // namespace veltrix
