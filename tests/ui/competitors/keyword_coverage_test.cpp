// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_coverage.h"

#include "scoring/difficulty_model.h"
#include "ui/support/research_world.h"

#include <QSignalSpy>

namespace veltrix
{
namespace
{

using Phase = KeywordCoverage::Phase;

class KeywordCoverageTest : public testing::Test
{
protected:
    KeywordCoverageTest() : coverage(std::make_unique<KeywordCoverage>(*world.store)) {}

    void start(const ITunesAppResult &app = foxglove()) { coverage->start(app, text("US"), 1001); }
    QString checked()
    {
        QStringList rows;
        for (const AppKeywordCheck &check : coverage->checks()) {
            rows << check.keyword + u' ' +
                        (check.position ? QString::number(*check.position) : text("-")) + u'/' +
                        (check.ownPosition ? QString::number(*check.ownPosition) : text("-"));
        }
        return rows.join(text(", "));
    }

    ResearchWorld world;
    FakeAppStore &appStore = *world.appStore;
    std::unique_ptr<KeywordCoverage> coverage;
};

TEST_F(KeywordCoverageTest, ChecksTheFirstTenPhrasesOneAfterAnother)
{
    start();
    EXPECT_EQ(coverage->phase(), Phase::Finished);
    EXPECT_EQ(appStore.searches,
              (QStringList{text("foxglove film/US/100"), text("film camera/US/100"),
                           text("foxglove/US/100"), text("film/US/100"), text("camera/US/100"),
                           text("foxglove film camera/US/100"), text("vintage analog/US/100"),
                           text("analog photo/US/100"), text("photo filters/US/100"),
                           text("vintage/US/100")}));
}

TEST_F(KeywordCoverageTest, FindsTheAppAndTheUsersOwn)
{
    start();
    EXPECT_TRUE(checked().startsWith(
        text("foxglove film 1/2, film camera 4/1, foxglove 1/2, film -/1, camera -/1")));
    EXPECT_EQ(coverage->coverageText(), text("8 / 10"));
}

TEST_F(KeywordCoverageTest, TheDifficultyIsThatOfTheFirstTenResults)
{
    start();
    const QList<ITunesAppResult> results = rankedWith(4, 60);
    const std::span<const ITunesAppResult> all(results.constData(), size_t(results.size()));
    EXPECT_EQ(coverage->checks()[1].difficulty,
              assessDifficulty(u"film camera", difficultySample(all), world.clock->now()).score);
    EXPECT_EQ(coverage->checks()[1].popularity, std::nullopt);
}

TEST_F(KeywordCoverageTest, WithoutResultsThereIsNoDifficulty)
{
    appStore.resultsOf.insert(text("foxglove film"), {});
    start();
    EXPECT_EQ(coverage->checks()[0].difficulty, std::nullopt);
    EXPECT_EQ(coverage->checks()[0].position, std::nullopt);
}

TEST_F(KeywordCoverageTest, RowsAppearAsTheyArrive)
{
    QSignalSpy rows(coverage.get(), &KeywordCoverage::checked);
    appStore.holds = true;
    start();
    EXPECT_EQ(coverage->phase(), Phase::Checking);
    EXPECT_EQ(coverage->coverageText(), text("Not checked"));
    EXPECT_EQ(coverage->pending().size(), 10);
    appStore.release();
    EXPECT_EQ(rows.size(), 1);
    EXPECT_EQ(coverage->coverageText(), text("1 / 1"));
    appStore.release();
    EXPECT_EQ(rows.size(), 2);
    EXPECT_EQ(coverage->pending().constFirst(), text("foxglove"));
    EXPECT_EQ(coverage->total(), 10);
    EXPECT_EQ(appStore.inFlight, 1);
}

TEST_F(KeywordCoverageTest, StopsAndGoesOnWhereItStopped)
{
    appStore.holds = true;
    start();
    appStore.release();
    coverage->stop();
    EXPECT_EQ(coverage->phase(), Phase::Stopped);
    EXPECT_EQ(appStore.inFlight, 0);
    EXPECT_EQ(coverage->checks().size(), 1);
    appStore.holds = false;
    coverage->resume();
    EXPECT_EQ(coverage->phase(), Phase::Finished);
    EXPECT_EQ(coverage->checks().size(), 10);
    EXPECT_EQ(appStore.searches.count(text("foxglove film/US/100")), 1);
}

TEST_F(KeywordCoverageTest, AFailureKeepsWhatWasCheckedAndCanBeRetried)
{
    appStore.fails = [](const QString &term) {
        return term == u"foxglove";
    };
    start();
    EXPECT_EQ(coverage->phase(), Phase::Failed);
    EXPECT_EQ(coverage->error(), text("The network is down."));
    EXPECT_EQ(coverage->checks().size(), 2);
    appStore.fails = nullptr;
    coverage->resume();
    EXPECT_EQ(coverage->phase(), Phase::Finished);
    EXPECT_EQ(coverage->error(), QString());
    EXPECT_EQ(coverage->checks().size(), 10);
}

TEST_F(KeywordCoverageTest, AnAppWithoutPhrasesIsFinishedAtOnce)
{
    ITunesAppResult app;
    app.trackId = 7;
    app.trackName = text("42");
    start(app);
    EXPECT_EQ(coverage->phase(), Phase::Finished);
    EXPECT_EQ(coverage->total(), 0);
    EXPECT_EQ(coverage->coverageText(), text("Not checked"));
    EXPECT_TRUE(appStore.searches.isEmpty());
}

TEST_F(KeywordCoverageTest, AnotherAppStartsAfresh)
{
    start();
    ITunesAppResult other = appResult(1002, "Grain");
    QSignalSpy restarts(coverage.get(), &KeywordCoverage::restarted);
    coverage->start(other, text("DE"), std::nullopt);
    EXPECT_EQ(restarts.size(), 1);
    ASSERT_EQ(coverage->checks().size(), 1);
    EXPECT_EQ(coverage->checks()[0].ownPosition, std::nullopt);
    EXPECT_EQ(appStore.searches.constLast(), text("grain/DE/100"));
}

TEST_F(KeywordCoverageTest, LeavingStopsIt)
{
    appStore.holds = true;
    start();
    EXPECT_EQ(appStore.inFlight, 1);
    coverage.reset();
    EXPECT_EQ(appStore.inFlight, 0);
    appStore.release();
}

TEST_F(KeywordCoverageTest, MayBeLeftFromItsOwnSignal)
{
    QObject::connect(coverage.get(), &KeywordCoverage::checked, coverage.get(),
                     [this] { coverage->stop(); });
    start();
    EXPECT_EQ(coverage->phase(), Phase::Stopped);
    EXPECT_EQ(coverage->checks().size(), 1);
}

} // namespace
} // namespace veltrix
