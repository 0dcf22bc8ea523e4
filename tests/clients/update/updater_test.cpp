// SPDX-License-Identifier: GPL-3.0-or-later
// What happens when the user asks.
#include "clients/update/updater_fixture.h"

namespace veltrix
{
namespace
{

QStringList lines(const char *text)
{
    return QString::fromUtf8(text).split(u'\n');
}

TEST_F(UpdaterTest, ARequestedCheckSaysThatThereIsAnUpdate)
{
    open();
    m_updater->checkForUpdates();
    EXPECT_EQ(takeHistory(), lines("checking\n2.0 is available"));
    EXPECT_EQ(m_http.urls(), lines("https://updates.example/feed.xml"));
    EXPECT_EQ(m_http.sent().at(0).request.bodyLimit, largestAppcast);
    EXPECT_TRUE(m_download.requests().empty()) << "the user has not been asked yet";
}

TEST_F(UpdaterTest, ARequestedCheckSaysThatNothingIsNewerAndWhy)
{
    open();
    TestItem other = item(QStringLiteral("3.0"));
    other.os.clear();
    TestItem beta = item(QStringLiteral("2.0"));
    beta.elements = QStringLiteral("<u:channel>beta</u:channel>");
    offer({item(QStringLiteral("1.5")), other, beta, item(QStringLiteral("1.4"))});
    m_updater->checkForUpdates();
    EXPECT_EQ(takeHistory(), lines("checking\nnothing newer"));
    EXPECT_EQ(std::get<UpdateNotNeeded>(m_updater->status()).reasons,
              lines("Version 3.0 is for another system.\nVersion 2.0 is in the channel “beta”."));
}

TEST_F(UpdaterTest, ARequestedCheckSaysWhyItFailed)
{
    open();
    m_http.answerWith([](const HttpRequest &) -> HttpResponse {
        throw TransportError(QStringLiteral("The network is not available."));
    });
    m_updater->checkForUpdates();
    m_http.answerWith(FakeHttp::response(503));
    m_updater->checkForUpdates();
    EXPECT_EQ(takeHistory(),
              lines("checking\nfailed: The network is not available.\nchecking\nfailed: The update "
                    "feed couldn’t be loaded: the server “updates.example” answered with status "
                    "503."));
}

TEST_F(UpdaterTest, ARequestedCheckDoesNotWaitADayNorItsTurnInARelease)
{
    TestItem steps = item(QStringLiteral("2.0"));
    steps.elements = QStringLiteral("<pubDate>Sat, 21 Nov 2026 11:00:00 +0000</pubDate>"
                                    "<u:phasedRolloutInterval>86400</u:phasedRolloutInterval>");
    offer({steps});
    m_settings->checked = m_clock->now();
    m_settings->group = 6;
    open();
    m_updater->checkForUpdates();
    EXPECT_EQ(takeHistory(), lines("checking\n2.0 is available"));
}

TEST_F(UpdaterTest, AnUpdateIsDownloadedWithProgressVerifiedAndHandedOver)
{
    open();
    m_download.hold();
    checkAndDownload();
    m_download.report(4);
    m_download.report(5);
    EXPECT_EQ(takeHistory(), lines("checking\n2.0 is available\ndownloading 2.0: 0"));
    turnEventLoop();
    EXPECT_EQ(takeHistory(), lines("downloading 2.0: 5"))
        << "told once, and not within the transfer";
    m_download.report(m_package.size() + 999);
    turnEventLoop();
    EXPECT_EQ(takeHistory(),
              QStringList{QStringLiteral("downloading 2.0: %1").arg(m_package.size())});
    EXPECT_TRUE(m_opened.isEmpty());
    m_download.release();
    EXPECT_EQ(takeHistory(), lines("handed over 2.0"));
    EXPECT_EQ(m_opened, QStringList{std::get<UpdateHandedOver>(m_updater->status()).path});
    EXPECT_TRUE(std::get<UpdateHandedOver>(m_updater->status()).isOpened);
    EXPECT_EQ(files(), m_opened);
}

TEST_F(UpdaterTest, ACheckMayStartUnlessACheckOrADownloadIsUnderWay)
{
    open();
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    m_http.hold();
    m_updater->checkForUpdates();
    EXPECT_FALSE(m_updater->canCheckForUpdates());
    m_updater->checkForUpdates();
    EXPECT_EQ(m_http.count(), 1);
    m_http.release();
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    m_download.hold();
    m_updater->downloadUpdate();
    EXPECT_FALSE(m_updater->canCheckForUpdates());
    m_updater->checkForUpdates();
    m_updater->downloadUpdate();
    EXPECT_EQ(m_http.count(), 1);
    EXPECT_EQ(m_download.requests().size(), 1U);
    m_download.release();
    m_files->waitUntilFinished();
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    EXPECT_EQ(m_canCheck, (QList{false, true, false, true}));
}

TEST_F(UpdaterTest, ACheckThatIsStoppedSaysNothing)
{
    open();
    m_http.hold();
    m_updater->checkForUpdates();
    m_updater->stop();
    EXPECT_EQ(m_http.inFlight(), 0);
    m_http.release();
    EXPECT_EQ(takeHistory(), lines("checking\nidle"));
    m_updater->checkForUpdates();
    EXPECT_EQ(takeHistory(), lines("checking\n2.0 is available"));
}

TEST_F(UpdaterTest, AStoppedDownloadCanBeStartedAgainAndLeavesNothing)
{
    open();
    m_download.hold();
    checkAndDownload();
    m_download.report(5);
    m_updater->stop();
    EXPECT_EQ(m_download.underWay(), 0);
    EXPECT_TRUE(files().isEmpty());
    m_updater->downloadUpdate();
    turnEventLoop();
    EXPECT_EQ(takeHistory(),
              lines("checking\n2.0 is available\ndownloading 2.0: 0\n2.0 is available"
                    "\ndownloading 2.0: 0"))
        << "progress of the stopped download shows in the next one";
    m_download.release();
    EXPECT_EQ(takeHistory(), lines("handed over 2.0"));
}

TEST_F(UpdaterTest, AFailedDownloadSaysWhyAndLeavesNothing)
{
    open();
    m_download.failWith(QStringLiteral("The connection failed."));
    checkAndDownload();
    EXPECT_EQ(takeHistory(), lines("checking\n2.0 is available\ndownloading 2.0: 0\nfailed: The "
                                   "connection failed."));
    EXPECT_EQ(std::get<UpdateFailed>(m_updater->status()).stage, UpdateFailed::Stage::Download);
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(m_opened.isEmpty());
    m_updater->downloadUpdate();
    EXPECT_EQ(takeHistory(), QStringList()) << "a failed update is checked for again first";
}

TEST_F(UpdaterTest, WithoutAnInstallerTheUserIsToldWhereThePackageIs)
{
    m_hasInstaller = false;
    open();
    checkAndDownload();
    ASSERT_EQ(m_opened.size(), 1);
    const auto *handedOver = std::get_if<UpdateHandedOver>(&m_updater->status());
    ASSERT_TRUE(handedOver);
    EXPECT_FALSE(handedOver->isOpened);
    EXPECT_EQ(handedOver->path, m_opened[0]);
    EXPECT_EQ(files(), m_opened);
}

TEST_F(UpdaterTest, APackageIsRemovedWhenTheNextOneComesOrNoneIsNeeded)
{
    open();
    checkAndDownload();
    checkAndDownload();
    ASSERT_EQ(m_opened.size(), 2);
    EXPECT_EQ(files(), m_opened.mid(1));
    offer({});
    m_updater->checkForUpdates();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(UpdaterTest, WhatCanOnlyBeReadAboutIsNotDownloaded)
{
    m_http.answerWith(
        FakeHttp::response(200, feedWith("<item><u:version>2.0</u:version><u:informationalUpdate/>"
                                         "<link>https://veltrix.example/2</link></item>")));
    open();
    checkAndDownload();
    EXPECT_EQ(takeHistory(), lines("checking\n2.0 is available"));
    EXPECT_TRUE(m_download.requests().empty());
}

TEST_F(UpdaterTest, NothingIsDownloadedWithoutAnAvailableUpdate)
{
    open();
    m_updater->downloadUpdate();
    m_updater->stop();
    m_updater->dismiss();
    EXPECT_EQ(takeHistory(), QStringList());
    EXPECT_TRUE(m_download.requests().empty());
}

TEST_F(UpdaterTest, WhatWasDismissedIsAnnouncedAgainByTheNextDaysCheck)
{
    m_settings->isAutomatic = true;
    open();
    m_clock->advance(Seconds(60));
    m_updater->dismiss();
    EXPECT_EQ(takeHistory(), lines("found 2.0\nidle"));
    m_clock->advance(Seconds(23 * 3600));
    EXPECT_EQ(takeHistory(), QStringList());
    m_clock->advance(Seconds(3600));
    EXPECT_EQ(takeHistory(), lines("found 2.0"));
}

TEST_F(UpdaterTest, AnOutcomeCanBeDismissedButNotWhatIsUnderWay)
{
    open();
    m_updater->checkForUpdates();
    m_updater->dismiss();
    EXPECT_EQ(takeHistory(), lines("checking\n2.0 is available\nidle"));
    m_http.hold();
    m_updater->checkForUpdates();
    m_updater->dismiss();
    EXPECT_EQ(takeHistory(), lines("checking"));
}

TEST_F(UpdaterTest, AListenerMayActOnWhatItHears)
{
    open();
    // Stops the first check as soon as it is announced, then checks and downloads at once.
    bool isFirst = true;
    QObject::connect(m_updater.get(), &Updater::statusChanged, m_updater.get(), [&] {
        if (std::holds_alternative<UpdateChecking>(m_updater->status()) &&
            std::exchange(isFirst, false))
            m_updater->stop();
        else if (std::holds_alternative<UpdateAvailable>(m_updater->status()))
            m_updater->downloadUpdate();
    });
    m_updater->checkForUpdates();
    EXPECT_EQ(takeHistory(), lines("checking\nidle"));
    EXPECT_EQ(m_http.count(), 0);
    m_updater->checkForUpdates();
    EXPECT_EQ(takeHistory(),
              lines("checking\n2.0 is available\ndownloading 2.0: 0\nhanded over 2.0"));
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    EXPECT_TRUE(m_canCheck.last());
}

TEST_F(UpdaterTest, AListenerMayStopADownloadFromItsProgress)
{
    open();
    m_download.hold();
    checkAndDownload();
    QObject::connect(m_updater.get(), &Updater::statusChanged, m_updater.get(),
                     [this] { m_updater->stop(); });
    m_download.report(5);
    EXPECT_EQ(m_download.underWay(), 1);
    turnEventLoop();
    EXPECT_EQ(m_download.underWay(), 0);
    EXPECT_EQ(takeHistory().last(), QStringLiteral("2.0 is available"));
}

TEST_F(UpdaterTest, ItMayGoWhileACheckOrADownloadIsUnderWay)
{
    open();
    m_http.hold();
    m_updater->checkForUpdates();
    m_updater.reset();
    EXPECT_EQ(m_http.inFlight(), 0);
    m_http.release();

    open();
    m_download.hold();
    checkAndDownload();
    m_download.report(5);
    m_updater.reset();
    EXPECT_EQ(m_download.underWay(), 0);
    turnEventLoop();
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(m_opened.isEmpty());
}

} // namespace
} // namespace veltrix
