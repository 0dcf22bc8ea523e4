// SPDX-License-Identifier: GPL-3.0-or-later
// The search for any app, and the search for similar ones.
#include "ui/competitors/competitor_search.h"
#include "ui/listing/similar_apps.h"
#include "ui/support/research_world.h"

namespace veltrix
{
namespace
{

class SearchesTest : public testing::Test
{
protected:
    ResearchWorld world;
    FakeAppStore &appStore = *world.appStore;
};

class CompetitorSearchTest : public SearchesTest
{
protected:
    using ShowAll = CompetitorSearch::ShowAll;

    CompetitorSearchTest() { search->setCountry(text("US")); }
    void submit(const char *term) { search->submit(text(term)); }
    qsizetype found() { return search->results().size(); }
    void failAll()
    {
        appStore.fails = [](const QString &) {
            return true;
        };
    }

    std::unique_ptr<CompetitorSearch> search = std::make_unique<CompetitorSearch>(*world.store);
};

TEST_F(CompetitorSearchTest, AsksForTwentyResults)
{
    submit("  film camera ");
    EXPECT_EQ(appStore.searches, QStringList{text("film camera/US/20")});
    EXPECT_EQ(search->term(), text("film camera"));
    EXPECT_EQ(search->title(), text("20 results for “film camera” in United States"));
    EXPECT_EQ(found(), 20);
    EXPECT_EQ(search->showAllState(), ShowAll::Offered);
}

TEST_F(CompetitorSearchTest, AllMeansAHundred)
{
    submit("film camera");
    appStore.holds = true;
    search->showAll();
    EXPECT_EQ(appStore.searches.constLast(), text("film camera/US/100"));
    EXPECT_EQ(found(), 20) << "what is there stays while more comes";
    EXPECT_EQ(search->showAllState(), ShowAll::UnderWay);
    appStore.release();
    EXPECT_EQ(found(), 61);
    EXPECT_EQ(search->showAllState(), ShowAll::Hidden);
}

TEST_F(CompetitorSearchTest, FewResultsAreAllThereAre)
{
    submit("foxglove");
    EXPECT_EQ(found(), 4);
    EXPECT_EQ(search->showAllState(), ShowAll::Hidden);
}

TEST_F(CompetitorSearchTest, AnEmptyTextSearchesNothing)
{
    submit("film camera");
    submit("   ");
    EXPECT_EQ(appStore.searches.size(), 1);
    EXPECT_EQ(found(), 0);
    EXPECT_TRUE(search->state().is<NotAsked>());
    EXPECT_EQ(search->term(), QString());
}

TEST_F(CompetitorSearchTest, AnotherStorefrontSearchesAgain)
{
    search->setCountry(text("FR"));
    EXPECT_TRUE(appStore.searches.isEmpty());
    submit("film camera");
    search->setCountry(text("DE"));
    EXPECT_EQ(appStore.searches,
              (QStringList{text("film camera/FR/20"), text("film camera/DE/20")}));
}

TEST_F(CompetitorSearchTest, AFailureIsToldAndRetried)
{
    failAll();
    submit("film camera");
    EXPECT_EQ(search->state().error(), text("The network is down."));
    EXPECT_EQ(search->title(), text("“film camera” in United States"));
    EXPECT_EQ(search->problem(), QString()) << "it stands in the place of results";
    appStore.fails = nullptr;
    search->retry();
    EXPECT_EQ(search->state().error(), QString());
    EXPECT_EQ(found(), 20);
}

TEST_F(CompetitorSearchTest, AFailureToShowAllKeepsWhatIsThere)
{
    submit("film camera");
    failAll();
    search->showAll();
    EXPECT_EQ(found(), 20);
    EXPECT_EQ(search->problem(), text("The network is down."));
    appStore.fails = nullptr;
    appStore.holds = true;
    search->retry();
    EXPECT_EQ(search->problem(), QString());
    appStore.release();
    EXPECT_EQ(found(), 61);
}

TEST_F(CompetitorSearchTest, ANewSearchStopsTheOneBefore)
{
    appStore.holds = true;
    submit("film camera");
    submit("foxglove");
    EXPECT_EQ(appStore.inFlight, 1);
    appStore.release();
    EXPECT_EQ(search->term(), text("foxglove"));
    EXPECT_EQ(found(), 4);
}

TEST_F(CompetitorSearchTest, LeavingStopsIt)
{
    appStore.holds = true;
    submit("film camera");
    search.reset();
    EXPECT_EQ(appStore.inFlight, 0);
    appStore.release();
}

class SimilarAppsTest : public SearchesTest
{
protected:
    [[nodiscard]] QList<ITunesAppResult> apps() const
    {
        const auto *found = similar->state().value();
        return found ? *found : QList<ITunesAppResult>();
    }

    std::unique_ptr<SimilarApps> similar = std::make_unique<SimilarApps>(*world.store);
};

TEST_F(SimilarAppsTest, AreFoundByTheFirstPhraseWithoutTheAppItself)
{
    appStore.resultsOf.insert(text("foxglove film"), rankedWith(3, 24));
    similar->start(foxglove(), text("US"));
    EXPECT_EQ(appStore.searches, QStringList{text("foxglove film/US/25")});
    EXPECT_EQ(apps(), rankedApps(10));
}

TEST_F(SimilarAppsTest, WithoutAPhraseTheGenreIsSearched)
{
    ITunesAppResult app;
    app.trackId = 7;
    app.trackName = text("42");
    app.primaryGenreName = text("TV");
    EXPECT_EQ(SimilarApps::termFor(app), text("TV"));
    app.primaryGenreName.reset();
    EXPECT_EQ(SimilarApps::termFor(app), QString());
    similar->start(app, text("US"));
    EXPECT_TRUE(appStore.searches.isEmpty());
    ASSERT_TRUE(similar->state().value());
    EXPECT_TRUE(apps().isEmpty());
}

TEST_F(SimilarAppsTest, AFailureIsToldAndRetried)
{
    appStore.fails = [](const QString &) {
        return true;
    };
    similar->start(foxglove(), text("US"));
    EXPECT_TRUE(similar->state().is<LoadFailed>());
    EXPECT_EQ(similar->state().error(), text("The network is down."));
    appStore.fails = nullptr;
    similar->retry();
    EXPECT_EQ(apps().size(), 8);
}

TEST_F(SimilarAppsTest, LeavingStopsIt)
{
    appStore.holds = true;
    similar->start(foxglove(), text("US"));
    EXPECT_TRUE(similar->state().is<Loading>());
    similar.reset();
    EXPECT_EQ(appStore.inFlight, 0);
    appStore.release();
}

} // namespace
} // namespace veltrix
