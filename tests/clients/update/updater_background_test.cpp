// SPDX-License-Identifier: GPL-3.0-or-later
// What Veltrix does by itself.
#include "clients/update/updater_fixture.h"

namespace veltrix
{
namespace
{

constexpr Seconds day(86'400);
const double delayInHours = Updater::backgroundDelay.count() / 3600;

TEST_F(UpdaterTest, NothingIsCheckedAtTheStartWhileAutomaticChecksAreOff)
{
    open();
    EXPECT_FALSE(m_updater->automaticallyChecksForUpdates());
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    m_clock->advance(30 * day);
    EXPECT_EQ(m_http.count(), 0);
    EXPECT_EQ(m_clock->sleepers(), 0);
    EXPECT_EQ(takeHistory(), QStringList());
}

TEST_F(UpdaterTest, TheFirstCheckWaitsUntilTheProgramHasStarted)
{
    m_settings->isAutomatic = true;
    open();
    EXPECT_EQ(m_http.count(), 0);
    m_clock->advance(Updater::backgroundDelay - Seconds(0.001));
    EXPECT_EQ(m_http.count(), 0);
    m_clock->advance(Seconds(0.001));
    EXPECT_EQ(m_http.count(), 1);
    EXPECT_EQ(takeHistory(), QStringList{QStringLiteral("found 2.0")});
    EXPECT_TRUE(m_download.requests().empty());
}

TEST_F(UpdaterTest, WhileOpenItChecksOnceADay)
{
    offer({});
    m_settings->isAutomatic = true;
    open();
    m_clock->advance(3 * day + Seconds(60));
    EXPECT_EQ(hoursOfChecks(), (QList<double>{delayInHours, delayInHours + 24, delayInHours + 48,
                                              delayInHours + 72}));
    EXPECT_EQ(takeHistory(), QStringList()) << "nothing newer is nothing to say";
}

TEST_F(UpdaterTest, ADayAlsoCountsAcrossStarts)
{
    offer({});
    m_settings->isAutomatic = true;
    m_settings->checked = m_start - Seconds(3600 * 20);
    open();
    m_clock->advance(Seconds(3600 * 4 - 1));
    EXPECT_EQ(m_http.count(), 0);
    open();
    m_clock->advance(Updater::backgroundDelay);
    EXPECT_EQ(m_http.count(), 1);
    EXPECT_EQ(m_settings->checked, m_start + Seconds(3600 * 4 - 1) + Updater::backgroundDelay);
    open();
    m_clock->advance(Seconds(3600));
    EXPECT_EQ(m_http.count(), 1);
}

TEST_F(UpdaterTest, ACheckIsDueAtExactly86400Seconds)
{
    offer({});
    m_settings->isAutomatic = true;
    const Date firstLook = m_start + Updater::backgroundDelay;
    m_settings->checked = firstLook - day + Seconds(0.5);
    open();
    m_clock->advance(Updater::backgroundDelay);
    EXPECT_EQ(m_http.count(), 0);
    m_clock->advance(Seconds(0.4));
    EXPECT_EQ(m_http.count(), 0);
    m_clock->advance(Seconds(0.2));
    EXPECT_EQ(m_http.count(), 1);

    m_settings->checked = m_clock->now() + Updater::backgroundDelay - day;
    open();
    m_clock->advance(Updater::backgroundDelay);
    EXPECT_EQ(m_http.count(), 2);
}

TEST_F(UpdaterTest, ARequestedCheckPutsTheNextOneOff)
{
    offer({});
    m_settings->isAutomatic = true;
    m_settings->checked = m_start;
    open();
    m_clock->advance(Seconds(3600 * 12));
    m_updater->checkForUpdates();
    EXPECT_EQ(m_settings->checked, m_clock->now());
    m_clock->advance(day);
    EXPECT_EQ(hoursOfChecks(), (QList<double>{12, 36}));
}

TEST_F(UpdaterTest, AFailureInTheBackgroundIsSilentAndTriedAgainInAnHour)
{
    m_settings->isAutomatic = true;
    const std::vector<HttpResponse> answers{FakeHttp::response(500),
                                            FakeHttp::response(200, "<rss><channel>"),
                                            FakeHttp::response(200, "<html>Please sign in</html>"),
                                            FakeHttp::response(200, feedOf({TestItem()}))};
    m_http.answerInTurn(answers);
    open();
    m_clock->advance(Updater::backgroundDelay + 3 * Updater::clockReadingInterval);
    EXPECT_EQ(hoursOfChecks(),
              (QList<double>{delayInHours, delayInHours + 1, delayInHours + 2, delayInHours + 3}));
    m_clock->advance(day - Seconds(1));
    EXPECT_EQ(m_http.count(), 4) << "the check that succeeded was the day's";
    m_http.answerWith([](const HttpRequest &) -> HttpResponse {
        throw TransportError(QStringLiteral("The network is not available."));
    });
    m_clock->advance(Seconds(1));
    EXPECT_EQ(m_http.count(), 5);
    EXPECT_EQ(takeHistory(), QStringList());
    EXPECT_TRUE(m_canCheck.isEmpty());
    m_updater->checkForUpdates();
    EXPECT_EQ(takeHistory().last(), QStringLiteral("failed: The network is not available."));
}

TEST_F(UpdaterTest, AFailedCheckDoesNotUseUpTheDayForTheNextStart)
{
    m_settings->isAutomatic = true;
    m_http.answerWith(FakeHttp::response(503));
    open();
    m_clock->advance(Seconds(60));
    m_updater->checkForUpdates();
    EXPECT_EQ(m_settings->checked, std::nullopt);
    offer({item(QStringLiteral("2.0"))});
    open();
    m_clock->advance(Updater::backgroundDelay);
    EXPECT_EQ(takeHistory().last(), QStringLiteral("found 2.0"));
    EXPECT_EQ(m_settings->checked, m_clock->now());
}

TEST_F(UpdaterTest, AMonthOnAnUnreliableLineIsCheckedEveryDay)
{
    m_settings->isAutomatic = true;
    int asked = 0;
    QList<Date> succeeded{m_start};
    m_http.answerWith([&](const HttpRequest &) -> HttpResponse {
        // Two of three checks fail.
        if (++asked % 3 != 0)
            throw TransportError(QStringLiteral("The network is not available."));
        succeeded.append(m_clock->now());
        return FakeHttp::response(200, feedOf({}));
    });
    open();
    m_clock->advance(30 * day);
    succeeded.append(m_clock->now());
    for (qsizetype i = 1; i < succeeded.size(); ++i)
        EXPECT_LE((succeeded[i] - succeeded[i - 1]).count(), 26 * 3600 + 60) << i;
}

TEST_F(UpdaterTest, ALastCheckInTheFutureDoesNotBlockChecks)
{
    offer({});
    m_settings->isAutomatic = true;
    m_settings->checked = m_start + 400 * day;
    open();
    m_clock->advance(Seconds(60));
    EXPECT_EQ(m_http.count(), 1);
}

TEST_F(UpdaterTest, AClockThatIsSetBackWhileVeltrixIsOpenDoesNotBlockChecks)
{
    offer({});
    m_settings->isAutomatic = true;
    open();
    m_clock->advance(Seconds(60));
    EXPECT_EQ(m_http.count(), 1);
    // The last check now lies a year ahead, and no wait of the updater's is longer than a day.
    m_clock->jumpTo(m_clock->now() - 365 * day);
    m_clock->advance(Updater::clockReadingInterval);
    EXPECT_EQ(m_http.count(), 2);
    EXPECT_LE(m_settings->checked, m_clock->now());
    m_clock->advance(day);
    EXPECT_EQ(m_http.count(), 3) << "and the next day goes on from there";
}

TEST_F(UpdaterTest, AMachineThatSleptChecksSoonAfterItWakes)
{
    offer({});
    m_settings->isAutomatic = true;
    open();
    m_clock->advance(Seconds(60));
    EXPECT_EQ(m_http.count(), 1);
    // Its timers stood still for two days.
    m_clock->jumpTo(m_clock->now() + 2 * day);
    m_clock->advance(Updater::clockReadingInterval);
    EXPECT_EQ(m_http.count(), 2);
}

TEST_F(UpdaterTest, TurningAutomaticChecksOnOrOffIsKeptAndTakesEffect)
{
    offer({});
    open();
    QList<bool> told;
    QObject::connect(m_updater.get(), &Updater::automaticallyChecksForUpdatesChanged,
                     m_updater.get(), [&told](bool isOn) { told.append(isOn); });
    m_updater->setAutomaticallyChecksForUpdates(true);
    m_updater->setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(m_settings->isAutomatic);
    m_clock->advance(Seconds(60));
    EXPECT_EQ(m_http.count(), 1);
    m_updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_FALSE(m_settings->isAutomatic);
    EXPECT_EQ(m_clock->sleepers(), 0);
    m_clock->advance(3 * day);
    EXPECT_EQ(m_http.count(), 1);
    m_updater->setAutomaticallyChecksForUpdates(true);
    m_clock->advance(Seconds(60));
    EXPECT_EQ(m_http.count(), 2);
    EXPECT_EQ(told, (QList{true, false, true}));
}

TEST_F(UpdaterTest, TurningAutomaticChecksOffStopsOneUnderWay)
{
    m_settings->isAutomatic = true;
    m_http.hold();
    open();
    m_clock->advance(Updater::backgroundDelay);
    EXPECT_EQ(m_http.inFlight(), 1);
    m_updater->setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(m_http.inFlight(), 0);
    m_http.release();
    EXPECT_EQ(takeHistory(), QStringList());
}

TEST_F(UpdaterTest, ASingleBackgroundCheckDoesNotBecomeAHabit)
{
    offer({});
    open();
    m_updater->checkForUpdatesInBackground();
    m_updater->checkForUpdatesInBackground();
    m_clock->advance(3 * day);
    EXPECT_EQ(m_http.count(), 1);
    m_updater->checkForUpdatesInBackground();
    m_clock->advance(Seconds(60));
    m_updater->checkForUpdatesInBackground();
    m_clock->advance(3 * day);
    EXPECT_EQ(m_http.count(), 2) << "one within a day is not due";
}

TEST_F(UpdaterTest, ABackgroundCheckIsInvisibleAndGivesWayToARequestedOne)
{
    m_settings->isAutomatic = true;
    m_http.hold();
    open();
    m_clock->advance(Updater::backgroundDelay);
    EXPECT_TRUE(m_updater->canCheckForUpdates());
    EXPECT_EQ(takeHistory(), QStringList());
    m_updater->checkForUpdates();
    EXPECT_EQ(m_http.inFlight(), 2);
    m_http.release();
    EXPECT_EQ(takeHistory(),
              (QStringList{QStringLiteral("checking"), QStringLiteral("2.0 is available")}));
}

TEST_F(UpdaterTest, ABackgroundCheckWaitsForADownloadAndDoesNotDisturbIt)
{
    open();
    m_download.hold();
    checkAndDownload();
    takeHistory();
    m_updater->setAutomaticallyChecksForUpdates(true);
    m_clock->advance(2 * day);
    EXPECT_EQ(m_http.count(), 1);
    EXPECT_EQ(takeHistory(), QStringList());
    m_download.release();
    m_files->waitUntilFinished();
    m_clock->advance(Updater::clockReadingInterval);
    EXPECT_EQ(m_http.count(), 2);
}

TEST_F(UpdaterTest, AnAvailableUpdateIsAnnouncedOnceAndAgainWhenThereIsANewerOne)
{
    m_settings->isAutomatic = true;
    open();
    m_clock->advance(3 * day);
    EXPECT_EQ(m_http.count(), 3);
    EXPECT_EQ(takeHistory(), QStringList{QStringLiteral("found 2.0")});
    offer({item(QStringLiteral("2.1"))});
    m_clock->advance(day);
    EXPECT_EQ(takeHistory(), QStringList{QStringLiteral("found 2.1")});
}

TEST_F(UpdaterTest, AReleaseInStepsReachesThisInstallationInItsTurn)
{
    TestItem steps = item(QStringLiteral("2.0"));
    steps.elements = QStringLiteral("<pubDate>Sat, 21 Nov 2026 12:00:00 +0000</pubDate>"
                                    "<u:phasedRolloutInterval>86400</u:phasedRolloutInterval>");
    offer({steps});
    m_settings->isAutomatic = true;
    m_settings->group = 3;
    open();
    m_clock->advance(3 * day);
    EXPECT_EQ(m_http.count(), 3);
    EXPECT_EQ(takeHistory(), QStringList());
    m_clock->advance(day);
    EXPECT_EQ(takeHistory(), QStringList{QStringLiteral("found 2.0")});
}

TEST_F(UpdaterTest, AnInstallationDrawsItsGroupOnce)
{
    m_settings->isAutomatic = true;
    open();
    EXPECT_EQ(m_settings->group, std::nullopt);
    m_clock->advance(Seconds(60));
    const std::optional<int> drawn = m_settings->group;
    ASSERT_TRUE(drawn && *drawn >= 0 && *drawn < rolloutGroups);
    m_clock->advance(10 * day);
    EXPECT_EQ(m_settings->group, drawn);
}

TEST_F(UpdaterTest, ItMayGoWhileABackgroundCheckWaitsOrIsUnderWay)
{
    m_settings->isAutomatic = true;
    open();
    EXPECT_EQ(m_clock->sleepers(), 1);
    m_updater.reset();
    EXPECT_EQ(m_clock->sleepers(), 0);

    m_http.hold();
    open();
    m_clock->advance(Updater::backgroundDelay);
    EXPECT_EQ(m_http.inFlight(), 1);
    m_updater.reset();
    EXPECT_EQ(m_http.inFlight(), 0);
    m_http.release();

    m_settings->checked.reset();
    open();
    m_clock->advance(Seconds(60));
    EXPECT_EQ(m_clock->sleepers(), 1) << "until the next day";
    m_updater.reset();
    m_clock->advance(3 * day);
    EXPECT_EQ(m_http.count(), 2);
}

} // namespace
} // namespace veltrix
