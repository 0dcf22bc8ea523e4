// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/show_in_folder.h"

#include "support/json_printers.h"
#include "support/task_outcome.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusServer>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// The file manager of a desktop, as far as it matters here.
class FakeFileManager final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList items;

public Q_SLOTS:
    Q_SCRIPTABLE void ShowItems(const QStringList &uris, const QString & /*startupId*/)
    {
        items += uris;
    }
};

class ShowInFolder : public testing::Test
{
protected:
    /// Connects to a bus that has, or lacks, a file manager.
    QString bus(QObject *fileManager)
    {
        QObject::connect(&m_server, &QDBusServer::newConnection, &m_server,
                         [this, fileManager](QDBusConnection connection) {
                             if (fileManager)
                                 connection.registerObject(
                                     QStringLiteral("/org/freedesktop/FileManager1"), fileManager,
                                     QDBusConnection::ExportScriptableSlots);
                             m_peer.emplace(connection);
                         });
        const QString name = QStringLiteral("test");
        QDBusConnection::connectToPeer(m_server.address(), name);
        waitFor([this] { return m_peer.has_value(); });
        return name;
    }
    ~ShowInFolder() override { QDBusConnection::disconnectFromPeer(QStringLiteral("test")); }

    const QString m_path = QStringLiteral("/tmp/a folder/veltrix_2.0.deb");
    const QUrl m_folder{QStringLiteral("file:///tmp/a folder")};
    QList<QUrl> m_opened;
    std::function<void(const QUrl &)> m_open = [this](const QUrl &url) {
        m_opened.append(url);
    };
    QDBusServer m_server;
    std::optional<QDBusConnection> m_peer;
};

TEST_F(ShowInFolder, TheFileManagerShowsTheFileItself)
{
    FakeFileManager files;
    showInFolder(m_path, m_open, bus(&files));
    waitFor([&files] { return !files.items.isEmpty(); });
    EXPECT_EQ(files.items, QStringList{QStringLiteral("file:///tmp/a%20folder/veltrix_2.0.deb")});
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    EXPECT_TRUE(m_opened.isEmpty());
}

TEST_F(ShowInFolder, WithoutAFileManagerTheFolderIsOpened)
{
    showInFolder(m_path, m_open, bus(nullptr));
    waitFor([this] { return !m_opened.isEmpty(); });
    EXPECT_EQ(m_opened, QList<QUrl>{m_folder});
}

TEST_F(ShowInFolder, WithoutABusTheFolderIsOpenedAtOnce)
{
    showInFolder(m_path, m_open, QStringLiteral("no such bus"));
    EXPECT_EQ(m_opened, QList<QUrl>{m_folder});
}

} // namespace
} // namespace veltrix

#include "show_in_folder_test.moc"
