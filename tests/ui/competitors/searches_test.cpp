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
    void submit(const char *term) { search->submit(text(term), text("US")); }
    const CompetitorSearch::State &state() { return search->state(); }

    std::unique_ptr<CompetitorSearch> search = std::make_unique<CompetitorSearch>(*world.store);
};

TEST_F(CompetitorSearchTest, AsksForTwentyResults)
{
    submit("  film camera ");
    EXPECT_EQ(appStore.searches, QStringList{text("film camera/US/20")});
    EXPECT_EQ(state().lastSearchTerm, text("film camera"));
    EXPECT_EQ(state().results.size(), 20);
    EXPECT_TRUE(state().hasSearched);
    EXPECT_TRUE(state().mayHaveMore());
}

TEST_F(CompetitorSearchTest, AllMeansAHundred)
{
    submit("film camera");
    appStore.holds = true;
    search->showAll();
    EXPECT_EQ(appStore.searches.constLast(), text("film camera/US/100"));
    EXPECT_EQ(state().results.size(), 20) << "what is there stays while more comes";
    EXPECT_FALSE(state().mayHaveMore());
    appStore.release();
    EXPECT_EQ(state().results.size(), 61);
    EXPECT_FALSE(state().mayHaveMore());
}

TEST_F(CompetitorSearchTest, FewResultsAreAllThereAre)
{
    submit("foxglove");
    EXPECT_EQ(state().results.size(), 4);
    EXPECT_FALSE(state().mayHaveMore());
}

TEST_F(CompetitorSearchTest, AnEmptyTextSearchesNothing)
{
    submit("film camera");
    submit("   ");
    EXPECT_EQ(appStore.searches.size(), 1);
    EXPECT_TRUE(state().results.isEmpty());
    EXPECT_FALSE(state().hasSearched);
}

TEST_F(CompetitorSearchTest, AFailureIsToldAndRetried)
{
    appStore.fails = [](const QString &) {
        return true;
    };
    submit("film camera");
    EXPECT_EQ(state().error, text("The network is down."));
    EXPECT_TRUE(state().results.isEmpty());
    appStore.fails = nullptr;
    search->retry();
    EXPECT_EQ(state().error, std::nullopt);
    EXPECT_EQ(state().results.size(), 20);
}

TEST_F(CompetitorSearchTest, AFailureToShowAllKeepsWhatIsThere)
{
    submit("film camera");
    appStore.fails = [](const QString &) {
        return true;
    };
    search->showAll();
    EXPECT_EQ(state().results.size(), 20);
    EXPECT_EQ(state().error, text("The network is down."));
    appStore.fails = nullptr;
    search->retry();
    EXPECT_EQ(state().results.size(), 61);
}

TEST_F(CompetitorSearchTest, ANewSearchStopsTheOneBefore)
{
    appStore.holds = true;
    submit("film camera");
    submit("foxglove");
    EXPECT_EQ(appStore.inFlight, 1);
    appStore.release();
    EXPECT_EQ(state().lastSearchTerm, text("foxglove"));
    EXPECT_EQ(state().results.size(), 4);
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
    std::unique_ptr<SimilarApps> similar = std::make_unique<SimilarApps>(*world.store);
};

TEST_F(SimilarAppsTest, AreFoundByTheFirstPhraseWithoutTheAppItself)
{
    appStore.resultsOf.insert(text("foxglove film"), rankedWith(3, 24));
    similar->start(foxglove(), text("US"));
    EXPECT_EQ(appStore.searches, QStringList{text("foxglove film/US/25")});
    EXPECT_EQ(similar->phase(), SimilarApps::Phase::Found);
    EXPECT_EQ(similar->apps(), rankedApps(10));
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
    EXPECT_EQ(similar->phase(), SimilarApps::Phase::Found);
    EXPECT_TRUE(similar->apps().isEmpty());
}

TEST_F(SimilarAppsTest, AFailureIsToldAndRetried)
{
    appStore.fails = [](const QString &) {
        return true;
    };
    similar->start(foxglove(), text("US"));
    EXPECT_EQ(similar->phase(), SimilarApps::Phase::Failed);
    EXPECT_EQ(similar->error(), text("The network is down."));
    appStore.fails = nullptr;
    similar->retry();
    EXPECT_EQ(similar->phase(), SimilarApps::Phase::Found);
    EXPECT_EQ(similar->apps().size(), 8);
}

TEST_F(SimilarAppsTest, LeavingStopsIt)
{
    appStore.holds = true;
    similar->start(foxglove(), text("US"));
    EXPECT_EQ(similar->phase(), SimilarApps::Phase::Searching);
    similar.reset();
    EXPECT_EQ(appStore.inFlight, 0);
    appStore.release();
}

} // namespace
} // namespace veltrix
