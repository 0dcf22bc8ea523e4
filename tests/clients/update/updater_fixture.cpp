// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/updater_fixture.h"

#include "clients/update/app_updater.h"
#include "effects/atomic_file.h"

#include <QCoreApplication>
#include <QDirIterator>

namespace veltrix
{

namespace
{

struct InWords {
    QString operator()(const UpdateIdle &) const { return QStringLiteral("idle"); }
    QString operator()(const UpdateChecking &) const { return QStringLiteral("checking"); }
    QString operator()(const UpdateNotNeeded &) const { return QStringLiteral("nothing newer"); }
    QString operator()(const UpdateAvailable &it) const
    {
        return (it.foundBy == UpdateCheck::Background ? QStringLiteral("found %1")
                                                      : QStringLiteral("%1 is available"))
            .arg(it.offer.version);
    }
    QString operator()(const UpdateDownloading &it) const
    {
        return QStringLiteral("downloading %1: %2").arg(it.offer.version).arg(it.received);
    }
    QString operator()(const UpdateHandedOver &it) const
    {
        return QStringLiteral("handed over %1").arg(it.offer.version);
    }
    QString operator()(const UpdateFailed &it) const { return u"failed: "_qs + it.description; }
};

} // namespace

QString inWords(const UpdateStatus &status)
{
    return std::visit(InWords(), status);
}

UpdaterTest::UpdaterTest()
{
    offer({item(QStringLiteral("2.0"))});
    m_download.answerWith(200, m_package);
}

UpdaterEnvironment UpdaterTest::environment()
{
    UpdaterEnvironment made;
    made.send = m_http.sender();
    made.download = m_download.downloader();
    made.clock = m_clock;
    made.settings = m_settings;
    made.openPackage = [this](const QString &path) {
        EXPECT_EQ(readWholeFile(path), m_package);
        m_opened.append(path);
        return m_hasInstaller;
    };
    made.installedVersion = QStringLiteral("1.5");
    made.systemVersion = QStringLiteral("6.1.0-18-amd64");
    made.downloadFolder = m_folder.filePath(QStringLiteral("updates"));
    made.files = m_files;
    return made;
}

void UpdaterTest::open()
{
    const auto source =
        updateSource(QStringLiteral("https://updates.example/feed.xml"), m_signer.publicKey());
    m_updater = std::make_unique<Updater>(source.value(), environment());
    QObject::connect(m_updater.get(), &Updater::statusChanged, m_updater.get(),
                     [this] { m_history.append(inWords(m_updater->status())); });
    QObject::connect(m_updater.get(), &Updater::canCheckForUpdatesChanged, m_updater.get(),
                     [this](bool canCheck) {
                         EXPECT_EQ(canCheck, m_updater->canCheckForUpdates());
                         m_canCheck.append(canCheck);
                     });
    if (m_updater->automaticallyChecksForUpdates())
        m_updater->checkForUpdatesInBackground();
}

void UpdaterTest::offer(const QList<TestItem> &items)
{
    m_http.answerWith(FakeHttp::response(200, feedOf(items)));
}

TestItem UpdaterTest::item(const QString &version) const
{
    TestItem made;
    made.version = version;
    made.length = QString::number(m_package.size());
    made.signature = m_signer.sign(m_package);
    return made;
}

void UpdaterTest::checkAndDownload()
{
    m_updater->checkForUpdates();
    m_updater->downloadUpdate();
    m_files->waitUntilFinished();
}

void UpdaterTest::turnEventLoop()
{
    QCoreApplication::processEvents();
}

QStringList UpdaterTest::takeHistory()
{
    m_files->waitUntilFinished();
    return std::exchange(m_history, {});
}

QStringList UpdaterTest::files() const
{
    QStringList found;
    QDirIterator all(m_folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext())
        found.append(all.next());
    return found;
}

QList<double> UpdaterTest::hoursOfChecks() const
{
    QList<double> hours;
    for (const FakeHttp::Sent &sent : m_http.sent())
        hours.append(std::round((sent.at - m_start).count()) / 3600);
    return hours;
}

} // namespace veltrix
