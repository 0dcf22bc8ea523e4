// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_keeper.h"

#include "clients/research_client.h"
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "support/fake_http.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using Results = QList<ITunesAppResult>;

QString text(const char *words)
{
    return QString::fromUtf8(words);
}

class UnreachableError final : public Error
{
public:
    UnreachableError() : Error(text("The network is down.")) {}
};

/// Answers with `count` whole listings.
class FakeStore final : public ITunesClientProtocol
{
public:
    Task<Results> search(QString term, QString country, std::int64_t limit,
                         std::stop_token) override
    {
        asked.append(QStringLiteral("%1/%2/%3").arg(term, country, QString::number(limit)));
        if (fails)
            throw UnreachableError();
        Results results;
        for (int i = 1; i <= count && i <= limit; ++i) {
            ITunesAppResult app;
            app.trackId = i;
            app.trackName = QStringLiteral("App %1").arg(i);
            app.sellerName = text("Brass Lens Studio");
            app.averageUserRating = 4.5;
            app.artworkUrl100 = text("https://icons.example/1.png");
            app.description = text("A long description.").repeated(100);
            app.screenshotUrls = QStringList{text("https://screens.example/1.png")};
            app.ipadScreenshotUrls = app.screenshotUrls;
            results.append(app);
        }
        co_return results;
    }
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t trackId, QString,
                                                std::stop_token) override
    {
        ITunesAppResult app;
        app.trackId = trackId;
        co_return app;
    }

    QStringList asked;
    int count = 100;
    bool fails = false;
};

class RankedAppsKeeperTest : public testing::Test
{
protected:
    RankedAppsKeeperTest() { open(); }

    void open()
    {
        keeper.reset();
        files->waitUntilFinished();
        keeper = std::make_unique<RankedAppsKeeper>(
            RankedAppsKeeper::Arguments{appStore, clock, {path(), files}});
    }
    [[nodiscard]] QString path() const
    {
        return folder.filePath(QStringLiteral("ranked_apps_cache_v1.json"));
    }
    Outcome<Results> search(const char *term, std::int64_t limit = 100)
    {
        return Outcome(keeper->search(text(term), text("us"), limit, {}));
    }
    std::optional<SavedResults> savedIn(RankedAppsSaving &saving, const char *keyword,
                                        const char *country = "US")
    {
        const Outcome outcome(saving.savedResults(text(keyword), text(country), {}));
        files->waitUntilFinished();
        return outcome.value();
    }
    std::optional<SavedResults> saved(const char *keyword) { return savedIn(*keeper, keyword); }

    QTemporaryDir folder;
    std::shared_ptr<VirtualClock> clock = std::make_shared<VirtualClock>();
    std::shared_ptr<FakeStore> appStore = std::make_shared<FakeStore>();
    std::shared_ptr<FileThread> files = std::make_shared<FileThread>();
    std::unique_ptr<RankedAppsKeeper> keeper;
};

TEST_F(RankedAppsKeeperTest, WhatAKeywordFoundIsThereWithItsDateAfterARestart)
{
    EXPECT_EQ(saved("photo editor"), std::nullopt);
    EXPECT_EQ(search(" Photo Editor\n").value().size(), 100);
    clock->advance(Seconds(7200));
    open();
    ASSERT_TRUE(saved("PHOTO EDITOR"));
    EXPECT_EQ(saved("photo editor")->results.size(), 100);
    EXPECT_EQ(saved("photo editor")->results[2].trackName, text("App 3"));
    EXPECT_EQ(clock->now() - saved("photo editor")->fetchedAt, Seconds(7200));
    EXPECT_EQ(savedIn(*keeper, "photo editor", "DE"), std::nullopt);
}

TEST_F(RankedAppsKeeperTest, TheResearchClientReadsTheSameFile)
{
    search("photo editor");
    ResearchClient research({[] { return SupabaseConfiguration(); },
                             FakeHttp(clock).sender(),
                             clock,
                             appStore,
                             {path(), files}});
    EXPECT_EQ(savedIn(research, "photo editor", "us"), saved("photo editor"));
}

TEST_F(RankedAppsKeeperTest, TheCallerGetsTheWholeListingAndTheFileWhatAListShows)
{
    const Results found = search("photo editor").value();
    EXPECT_TRUE(found[0].description && found[0].screenshotUrls && found[0].ipadScreenshotUrls);
    ITunesAppResult listed = found[0];
    listed.description.reset();
    listed.screenshotUrls.reset();
    listed.ipadScreenshotUrls.reset();
    EXPECT_EQ(saved("photo editor")->results[0], listed);
    EXPECT_LT(readWholeFile(path()).size(), 100 * 250);
}

TEST_F(RankedAppsKeeperTest, ASearchForFewerResultsKeepsNothing)
{
    search("photo editor");
    search("photo editor", 25);
    EXPECT_EQ(saved("photo editor")->results.size(), 100);
    search("collage", 20);
    EXPECT_EQ(saved("collage"), std::nullopt);
}

TEST_F(RankedAppsKeeperTest, AFailureKeepsWhatThereWas)
{
    search("photo editor");
    appStore->fails = true;
    clock->advance(Seconds(7200));
    EXPECT_THROW(static_cast<void>(search("photo editor").value()), UnreachableError);
    EXPECT_EQ(saved("photo editor")->results.size(), 100);
}

TEST_F(RankedAppsKeeperTest, TheSameAnswerKeepsItsDateForHalfAnHour)
{
    search("photo editor");
    const Date first = clock->now();
    clock->advance(Seconds(1799));
    search("photo editor");
    EXPECT_EQ(saved("photo editor")->fetchedAt, first);
    appStore->count = 99;
    search("photo editor");
    EXPECT_EQ(saved("photo editor")->fetchedAt, clock->now()) << "another answer is a new one";
    clock->advance(Seconds(1800));
    search("photo editor");
    EXPECT_EQ(saved("photo editor")->fetchedAt, clock->now());
}

TEST_F(RankedAppsKeeperTest, TheFileHasTheNewestHundredKeywordsAndTheOthersAreThereToo)
{
    appStore->count = 1;
    for (int i = 0; i < 130; ++i) {
        search(qPrintable(QString::number(i)));
        clock->advance(Seconds(1));
    }
    keeper.reset();
    files->waitUntilFinished();
    const auto file = fromJson<std::map<QString, SavedResults>>(readWholeFile(path()));
    EXPECT_EQ(file.size(), 100U);
    EXPECT_FALSE(file.contains(text("US:29")));
    EXPECT_TRUE(file.contains(text("US:30")));
    open();
    EXPECT_TRUE(saved("0"));
    EXPECT_TRUE(saved("29"));
    EXPECT_TRUE(saved("129"));
    EXPECT_EQ(saved("130"), std::nullopt);
}

TEST_F(RankedAppsKeeperTest, LooksUpThroughTheOtherClient)
{
    EXPECT_EQ(Outcome(keeper->lookup(7, text("us"), {})).value()->trackId, 7);
}

TEST_F(RankedAppsKeeperTest, WithoutAFileItKeepsInMemory)
{
    RankedAppsKeeper inMemory({appStore, clock, {}});
    EXPECT_EQ(Outcome(inMemory.search(text("collage"), text("us"), 100, {})).value().size(), 100);
    EXPECT_TRUE(savedIn(inMemory, "collage", "us"));
}

} // namespace
} // namespace veltrix
