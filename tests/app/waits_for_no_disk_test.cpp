// SPDX-License-Identifier: GPL-3.0-or-later
// Neither a client nor the settings let the thread of the windows wait for a disk.
#include "clients/artwork_loader.h"
#include "clients/autocomplete_client.h"
#include "clients/ranked_apps_keeper.h"
#include "clients/update/fake_download.h"
#include "clients/update/test_feed.h"
#include "clients/update/test_package.h"
#include "clients/update/update_download.h"
#include "effects/atomic_file.h"
#include "effects/settings_file.h"
#include "support/fake_http.h"
#include "support/flush_watch.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// Always the same app.
class OneApp final : public ITunesClientProtocol
{
public:
    Task<QList<ITunesAppResult>> search(QString, QString, std::int64_t, std::stop_token) override
    {
        ITunesAppResult app;
        app.trackId = 7;
        co_return QList{app};
    }
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t, QString, std::stop_token) override
    {
        co_return std::nullopt;
    }
};

class WaitsForNoDisk : public testing::Test
{
protected:
    [[nodiscard]] QString path(const char *name) const
    {
        return m_folder.filePath(QString::fromLatin1(name));
    }

    QTemporaryDir m_folder;
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>();
    FakeHttp m_http{m_clock};
};

TEST_F(WaitsForNoDisk, AndTheCountSeesWhoeverDoes)
{
    beginFlushWatch();
    writeFileAtomically(path("file"), "x");
    EXPECT_EQ(endFlushWatch().onWatchedThread, 2) << "the file and its folder";
    beginFlushWatch();
    m_files->start([this] { writeFileAtomically(path("file"), "y"); });
    m_files->waitUntilFinished();
    const Flushes flushes = endFlushWatch();
    EXPECT_EQ(flushes.onWatchedThread, 0);
    EXPECT_EQ(flushes.elsewhere, 2);
}

TEST_F(WaitsForNoDisk, KeepingRankedAppsInTheFileAndInTheDatabase)
{
    beginFlushWatch();
    {
        RankedAppsKeeper keeper(
            {std::make_shared<OneApp>(), m_clock, {path("ranked.json"), m_files}});
        for (int i = 0; i < 130; ++i) {
            m_clock->advance(Seconds(1));
            EXPECT_TRUE(Outcome(keeper.search(QString::number(i), QStringLiteral("US"), 100, {}))
                            .hasValue());
            m_files->waitUntilFinished();
        }
        Outcome found(keeper.savedResults(QStringLiteral("3"), QStringLiteral("US"), {}));
        EXPECT_TRUE(found.wait().value());
    }
    m_files.reset();
    EXPECT_TRUE(QFileInfo::exists(path("caches.sqlite")));
    EXPECT_EQ(endFlushWatch().onWatchedThread, 0);
}

TEST_F(WaitsForNoDisk, SearchSuggestions)
{
    m_http.answerWith(FakeHttp::response(
        200, "<plist><dict><key>hints</key><array><dict><key>term</key><string>photos</string>"
             "</dict></array></dict></plist>"));
    // It is kept under another name before it is replaced.
    writeFileAtomically(path("hints.json"), "damaged");
    beginFlushWatch();
    AutocompleteClient client({m_http.sender(), m_clock, path("hints.json"),
                               QUrl(QStringLiteral("https://hints.example")), m_files});
    const Outcome outcome(client.observe(QStringLiteral("photos"), QStringLiteral("US"), {}));
    m_clock->runUntilIdle();
    EXPECT_TRUE(outcome.value());
    m_files->waitUntilFinished();
    const Flushes flushes = endFlushWatch();
    EXPECT_EQ(flushes.onWatchedThread, 0);
    EXPECT_GT(flushes.elsewhere, 0);
}

TEST_F(WaitsForNoDisk, Images)
{
    QByteArray image;
    QBuffer buffer(&image);
    QImage(8, 8, QImage::Format_RGB32).save(&buffer, "PNG");
    m_http.answerWith(FakeHttp::response(200, image));
    beginFlushWatch();
    ArtworkLoader loader({m_http.sender(), m_clock, path("artwork")});
    const Outcome outcome(
        loader.load(*Url::fromText(QStringLiteral("https://icons.example/1.png")), {}));
    m_clock->runUntilIdle();
    EXPECT_EQ(outcome.value(), image);
    EXPECT_EQ(QDir(path("artwork")).entryList(QDir::Files).size(), 1);
    const Flushes flushes = endFlushWatch();
    EXPECT_EQ(flushes.onWatchedThread + flushes.elsewhere, 0) << "they can be had again";
}

TEST_F(WaitsForNoDisk, UpdatesThatAreStored)
{
    const TestSigner signer;
    const QByteArray content = packageOf("2.0");
    FakeDownload http;
    http.answerWith(200, content);
    UpdatePackage package;
    package.url = QUrl(QStringLiteral("https://updates.example/veltrix.deb"));
    package.length = content.size();
    package.signature = UpdateSignature::fromBase64(signer.sign(content)).value();
    package.fileName = QStringLiteral("veltrix.deb");
    beginFlushWatch();
    Outcome outcome(downloadUpdate(http.downloader(), package,
                                   UpdateKey::fromBase64(signer.publicKey()).value(),
                                   {QStringLiteral("2.0"), QStringLiteral("1.5")}, path("updates"),
                                   m_files, [](qint64, std::optional<qint64>) {}, {}));
    EXPECT_EQ(readWholeFile(outcome.wait().value()), content);
    const Flushes flushes = endFlushWatch();
    EXPECT_EQ(flushes.onWatchedThread, 0);
    EXPECT_GT(flushes.elsewhere, 0);
}

TEST_F(WaitsForNoDisk, Settings)
{
    beginFlushWatch();
    SettingsFile settings(path("veltrix.conf"), m_files);
    settings.setValue(QStringLiteral("theme"), QStringLiteral("dark"));
    QCoreApplication::processEvents();
    m_files->waitUntilFinished();
    const SettingsFile next(path("veltrix.conf"), m_files);
    EXPECT_EQ(next.value(QStringLiteral("theme")), QStringLiteral("dark"));
    const Flushes flushes = endFlushWatch();
    EXPECT_EQ(flushes.onWatchedThread, 0);
    EXPECT_GT(flushes.elsewhere, 0);
}

} // namespace
} // namespace veltrix
