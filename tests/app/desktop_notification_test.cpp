// SPDX-License-Identifier: GPL-3.0-or-later
// Notifications over a bus of the test's own, with a notification service in it.
#include "app/desktop_notification.h"

#include "support/task_outcome.h"

#include <QDBusMessage>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QVariantMap>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// What a desktop answers, and what it was asked for.
class NotificationService final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Shown {
        QString title;
        QString text;
        QStringList actions;
        QString desktopEntry;
    };
    QStringList capabilities{QStringLiteral("body"), QStringLiteral("actions")};
    std::vector<Shown> shown;

public Q_SLOTS:
    // The names are those of the protocol.
    QStringList GetCapabilities() { return capabilities; }
    uint Notify(const QString &, uint, const QString &, const QString &summary, const QString &body,
                const QStringList &actions, const QVariantMap &hints, int)
    {
        shown.push_back(
            {summary, body, actions, hints.value(QStringLiteral("desktop-entry")).toString()});
        return uint(shown.size());
    }

Q_SIGNALS:
    void ActionInvoked(uint id, const QString &action);
    void ActivationToken(uint id, const QString &token);
    void NotificationClosed(uint id, uint reason);
};

class NotificationTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty())
            GTEST_SKIP() << "dbus-daemon is not installed";
        daemon.start(QStringLiteral("dbus-daemon"),
                     {QStringLiteral("--session"), QStringLiteral("--nofork"),
                      QStringLiteral("--print-address=1")});
        ASSERT_TRUE(daemon.waitForReadyRead());
        address = QString::fromUtf8(daemon.readLine()).trimmed();
        ASSERT_TRUE(desktop().registerObject(
            QStringLiteral("/org/freedesktop/Notifications"), &service,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
    }
    void TearDown() override
    {
        notification.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        daemon.kill();
        daemon.waitForFinished();
    }
    QDBusConnection desktop()
    {
        return QDBusConnection::connectToBus(address, QStringLiteral("desktop"));
    }
    void startService()
    {
        ASSERT_TRUE(desktop().registerService(QStringLiteral("org.freedesktop.Notifications")));
    }
    void show(const QString &text = QStringLiteral("moon: 5"))
    {
        notification = std::make_unique<DesktopNotification>(
            QDBusConnection::connectToBus(address, QStringLiteral("program")));
        opened = std::make_unique<QSignalSpy>(notification.get(), &DesktopNotification::opened);
        closed = std::make_unique<QSignalSpy>(notification.get(), &DesktopNotification::closed);
        notification->show(QStringLiteral("1 keyword rose"), text);
    }

    QProcess daemon;
    QString address;
    NotificationService service;
    std::unique_ptr<DesktopNotification> notification;
    std::unique_ptr<QSignalSpy> opened;
    std::unique_ptr<QSignalSpy> closed;
};

TEST_F(NotificationTest, IsShownInTheNameOfTheProgram)
{
    startService();
    show();
    waitFor([this] { return !service.shown.empty(); });
    const auto &shown = service.shown.front();
    EXPECT_EQ(shown.title, QStringLiteral("1 keyword rose"));
    EXPECT_EQ(shown.text, QStringLiteral("moon: 5"));
    EXPECT_EQ(shown.actions,
              (QStringList{QStringLiteral("default"), QStringLiteral("Open Veltrix")}));
    EXPECT_EQ(shown.desktopEntry, QStringLiteral("veltrix"));
}

TEST_F(NotificationTest, SaysThatItWasOpenedWithWhatLetsAWindowComeToTheFront)
{
    startService();
    show();
    waitFor([this] { return !service.shown.empty(); });
    QTest::qWait(50);
    Q_EMIT service.ActionInvoked(7, QStringLiteral("default"));
    Q_EMIT service.ActivationToken(1, QStringLiteral("token-1"));
    Q_EMIT service.ActionInvoked(1, QStringLiteral("default"));
    waitFor([this] { return !opened->isEmpty(); });
    EXPECT_EQ(opened->size(), 1) << "another's notification is not ours";
    EXPECT_EQ(opened->constFirst().constFirst().toString(), QStringLiteral("token-1"));
    EXPECT_TRUE(closed->isEmpty());
    Q_EMIT service.NotificationClosed(1, 2);
    waitFor([this] { return !closed->isEmpty(); });
}

TEST_F(NotificationTest, TextIsNoMarkup)
{
    startService();
    service.capabilities.append(QStringLiteral("body-markup"));
    show(QStringLiteral("<b>Evil</b> & \"Sons\""));
    waitFor([this] { return !service.shown.empty(); });
    EXPECT_EQ(service.shown.front().text,
              QStringLiteral("&lt;b&gt;Evil&lt;/b&gt; &amp; &quot;Sons&quot;"));
    service.capabilities.removeLast();
    show(QStringLiteral("Salt & Sand"));
    waitFor([this] { return service.shown.size() == 2; });
    EXPECT_EQ(service.shown.back().text, QStringLiteral("Salt & Sand"));
}

TEST_F(NotificationTest, IsOverAtOnceWhereItCannotBeClicked)
{
    startService();
    service.capabilities = {QStringLiteral("body")};
    show();
    waitFor([this] { return !closed->isEmpty(); });
    EXPECT_EQ(service.shown.size(), 1U);
    EXPECT_EQ(service.shown.front().actions, QStringList());
}

TEST_F(NotificationTest, IsOverAtOnceWhereNobodyShowsAny)
{
    show();
    waitFor([this] { return !closed->isEmpty(); });
    EXPECT_TRUE(service.shown.empty());
}

} // namespace
} // namespace veltrix

#include "desktop_notification_test.moc"
