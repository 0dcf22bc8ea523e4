// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_cache.h"

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

const Date now = dateFromUnixSeconds(1'795'262'400); // 2026-11-21T12:00:00Z

class RankedAppsCacheTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const
    {
        return m_folder.filePath(QStringLiteral("ranked_apps_cache_v1.json"));
    }
    [[nodiscard]] std::unique_ptr<RankedAppsCache> openCache()
    {
        return std::make_unique<RankedAppsCache>(RankedAppsCache::Arguments{path(), m_files},
                                                 m_clock);
    }
    std::unique_ptr<ResearchClient> openClient()
    {
        m_files->waitUntilFinished();
        return std::make_unique<ResearchClient>(ResearchClient::Arguments{
            [] {
                return SupabaseConfiguration{QUrl(QStringLiteral("https://p.example")),
                                             QStringLiteral("sb_publishable_x")};
            },
            m_http.sender(),
            m_clock,
            nullptr,
            {path(), m_files}});
    }
    QList<ITunesAppResult> search(ResearchClient &client)
    {
        const Outcome outcome(client.search(QStringLiteral("Bear"), QStringLiteral("us"), 10, {}));
        m_files->waitUntilFinished();
        return outcome.value();
    }
    std::optional<SavedResults> saved(ResearchClient &client)
    {
        const Outcome outcome(
            client.savedResults(QStringLiteral("bear"), QStringLiteral("US"), {}));
        m_files->waitUntilFinished();
        return outcome.value();
    }

    QTemporaryDir m_folder;
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>(now);
    FakeHttp m_http{m_clock};
};

TEST_F(RankedAppsCacheTest, TheResearchClientCarriesItFromOneStartToTheNext)
{
    m_http.answerWith(FakeHttp::response(
        200,
        R"({"status":"ready","fetchedAt":"2026-11-21T11:59:59.500Z","results":[{"trackId":7}]})"));
    EXPECT_EQ(search(*openClient()).size(), 1);
    m_files->waitUntilFinished();
    EXPECT_EQ(readWholeFile(path()),
              R"({"US:bear":{"fetchedAt":816955199.5,"results":[{"trackId":7}]}})");
    auto second = openClient();
    EXPECT_EQ(search(*second).front().trackId, 7);
    EXPECT_EQ(m_http.count(), 1);
    m_clock->advance(Seconds(604'798));
    EXPECT_TRUE(saved(*openClient()));
    m_clock->advance(Seconds(2));
    EXPECT_FALSE(saved(*openClient()));
    EXPECT_TRUE(saved(*second));
}

TEST_F(RankedAppsCacheTest, WhatIsKeptIsThereForWhoeverAsksNextBeforeItIsOnTheDisk)
{
    const auto cache = openCache();
    for (int i = 0; i < 200; ++i)
        cache->keep(QString::number(i), {now, {}});
    const Outcome found(cache->find(QStringLiteral("7"), {}));
    m_files->waitUntilFinished();
    EXPECT_TRUE(found.value());
}

TEST_F(RankedAppsCacheTest, NothingIsReadBeforeSomethingIsAsked)
{
    const auto cache = openCache();
    m_files->waitUntilFinished();
    writeFileAtomically(path(), R"({"US:a":{"fetchedAt":816955199.5,"results":[]}})");
    const Outcome found(cache->find(QStringLiteral("US:a"), {}));
    m_files->waitUntilFinished();
    EXPECT_TRUE(found.value());
}

TEST_F(RankedAppsCacheTest, ItsEndLeavesTheFileUpToDate)
{
    auto cache = openCache();
    for (int i = 0; i < 130; ++i)
        cache->keep(QString::number(i), {now + Seconds(i), {}});
    cache.reset();
    m_files.reset();
    const auto file = fromJson<std::map<QString, SavedResults>>(readWholeFile(path()));
    EXPECT_EQ(file.size(), 100U);
    EXPECT_TRUE(file.contains(QStringLiteral("129")));
}

TEST_F(RankedAppsCacheTest, AClientThatGoesWhileTheDiskIsAskedEndsTheSearch)
{
    auto client = openClient();
    const Outcome outcome(client->search(QStringLiteral("bear"), QStringLiteral("us"), 10, {}));
    client.reset();
    EXPECT_TRUE(outcome.isCancelled());
    m_files->waitUntilFinished();
    EXPECT_EQ(m_http.count(), 0);
}

} // namespace
} // namespace veltrix
