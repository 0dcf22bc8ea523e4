// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_cache.h"

#include "clients/research_client.h"
#include "effects/atomic_file.h"
#include "support/fake_http.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const Date now = dateFromUnixSeconds(1'795'262'400); // 2026-11-21T12:00:00Z

SavedResults savedAt(Date date)
{
    ITunesAppResult app;
    app.trackId = 42;
    return {date, {app}};
}

class RankedAppsCacheTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const
    {
        return m_folder.filePath(QStringLiteral("data/ranked_apps_cache_v1.json"));
    }
    void write(const QByteArray &content) const
    {
        QDir().mkpath(m_folder.filePath(QStringLiteral("data")));
        writeFileAtomically(path(), content);
    }

    QTemporaryDir m_folder;
};

TEST_F(RankedAppsCacheTest, IsAnObjectOfKeysWithDatesAsSecondsSince2001)
{
    saveRankedAppsCache(
        path(), {{QStringLiteral("US:a \"b\""), savedAt(dateFromReferenceSeconds(100.25))}});
    EXPECT_EQ(readWholeFile(path()),
              R"({"US:a \"b\"":{"fetchedAt":100.25,"results":[{"trackId":42}]}})");
}

TEST_F(RankedAppsCacheTest, EntriesOfSevenDaysAndOlderAreDroppedOnLoading)
{
    saveRankedAppsCache(path(), {{QStringLiteral("US:kept"), savedAt(now - Seconds(604'799))},
                                 {QStringLiteral("US:dropped"), savedAt(now - Seconds(604'800))},
                                 {QStringLiteral("US:future"), savedAt(now + Seconds(10))}});
    const RankedAppsCache loaded = loadRankedAppsCache(path(), now);
    EXPECT_EQ(loaded.size(), 2U);
    EXPECT_TRUE(loaded.contains(QStringLiteral("US:kept")));
    EXPECT_TRUE(loaded.contains(QStringLiteral("US:future")));
}

TEST_F(RankedAppsCacheTest, AMissingOrBrokenFileIsAnEmptyCache)
{
    EXPECT_TRUE(loadRankedAppsCache(path(), now).empty());
    for (const char *content : {"", "{", "[]", R"({"US:a":{}})", R"({"US:a":{"fetchedAt":1}})",
                                R"({"US:a":{"fetchedAt":"x","results":[]}})"}) {
        write(content);
        EXPECT_TRUE(loadRankedAppsCache(path(), now).empty()) << content;
    }
}

TEST_F(RankedAppsCacheTest, OnlyTheNewestHundredAreWritten)
{
    RankedAppsCache cache;
    for (int i = 0; i < 130; ++i)
        cache.insert({QString::number(i), savedAt(now - Seconds(i))});
    saveRankedAppsCache(path(), cache);
    const RankedAppsCache loaded = loadRankedAppsCache(path(), now);
    EXPECT_EQ(loaded.size(), 100U);
    EXPECT_TRUE(loaded.contains(QStringLiteral("99")));
    EXPECT_FALSE(loaded.contains(QStringLiteral("100")));
}

TEST_F(RankedAppsCacheTest, AWriteThatFailsKeepsTheOldFile)
{
    saveRankedAppsCache(path(), {{QStringLiteral("US:a"), savedAt(now)}});
    saveRankedAppsCache(
        path(), {{QStringLiteral("US:b"),
                  savedAt(dateFromReferenceSeconds(std::numeric_limits<double>::infinity()))}});
    EXPECT_TRUE(loadRankedAppsCache(path(), now).contains(QStringLiteral("US:a")));
    // A folder in the file's place.
    saveRankedAppsCache(m_folder.path(), {{QStringLiteral("US:a"), savedAt(now)}});
    EXPECT_EQ(
        QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{QStringLiteral("data")});
}

TEST_F(RankedAppsCacheTest, TheResearchClientCarriesItFromOneStartToTheNext)
{
    const auto clock = std::make_shared<VirtualClock>(now);
    FakeHttp http(clock);
    http.answerWith(FakeHttp::response(
        200,
        R"({"status":"ready","fetchedAt":"2026-11-21T11:59:59.500Z","results":[{"trackId":7}]})"));
    const auto open = [&] {
        return std::make_unique<ResearchClient>(ResearchClient::Arguments{
            [] {
                return SupabaseConfiguration{QUrl(QStringLiteral("https://p.example")),
                                             QStringLiteral("sb_publishable_x")};
            },
            http.sender(), clock, nullptr, path()});
    };
    const auto search = [](ResearchClient &client) {
        return Outcome(client.search(QStringLiteral("Bear"), QStringLiteral("us"), 10, {}));
    };
    EXPECT_TRUE(search(*open()).hasValue());
    EXPECT_EQ(readWholeFile(path()),
              R"({"US:bear":{"fetchedAt":816955199.5,"results":[{"trackId":7}]}})");
    auto second = open();
    EXPECT_EQ(search(*second).value().front().trackId, 7);
    EXPECT_EQ(http.count(), 1);
    clock->advance(Seconds(604'798));
    EXPECT_TRUE(open()->savedResults(QStringLiteral("bear"), QStringLiteral("US")));
    clock->advance(Seconds(2));
    EXPECT_FALSE(open()->savedResults(QStringLiteral("bear"), QStringLiteral("US")));
    EXPECT_TRUE(second->savedResults(QStringLiteral("bear"), QStringLiteral("US")));
}

} // namespace
} // namespace veltrix
