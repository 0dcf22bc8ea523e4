// SPDX-License-Identifier: GPL-3.0-or-later
// The program's research client and the real research service: function, database, TLS and all.
#include "running_service.h"
#include "steered_clock.h"

#include "clients/itunes_client.h"
#include "clients/network_http.h"
#include "clients/research_client.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"

#include <QJsonDocument>
#include <QJsonValue>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Results = QList<ITunesAppResult>;
using Waits = SteeredClock::Waits;

QString queuedText(int minutes)
{
    return QStringLiteral("Research is queued or temporarily limited. Try again in %1 minute(s).")
        .arg(minutes);
}

/// One service for all tests; a suite starts it anew when it wants it in another way.
class Service : public testing::Environment
{
public:
    void SetUp() override { s_running = std::make_unique<RunningService>(); }
    void TearDown() override { s_running.reset(); }
    static RunningService &running() { return *s_running; }

private:
    static inline std::unique_ptr<RunningService> s_running;
};
const auto *const environment = testing::AddGlobalTestEnvironment(new Service);

/// Each test asks for keywords of its own: the function keeps the answers of the day in memory.
class ResearchOverTls : public testing::Test
{
protected:
    static void SetUpTestSuite() { service().start(); }
    static RunningService &service() { return Service::running(); }

    ResearchOverTls()
    {
        service().sql(QStringLiteral(R"(
            truncate aso_research.fetch_job, aso_research.client_quota;
            update aso_research.fetch_budget set next_at = null, blocked_until = null, block = null,
                failing = '{}', worker = null, worker_until = null;
            delete from aso_research.setting;
            insert into aso_research.setting default values)"));
        openClient();
    }

    void openClient()
    {
        const ConfigurationProvider configuration = [folder = service().resourceFolder()] {
            return SupabaseConfiguration::load(folder);
        };
        m_client.reset();
        m_files->waitUntilFinished();
        m_client = std::make_unique<ResearchClient>(ResearchClient::Arguments{
            configuration, noted(m_http->sender()), m_clock, m_appStore, {m_cachePath, m_files}});
    }
    /// Notes what the service answers, such as "202 pending".
    HttpSend noted(HttpSend send)
    {
        return [answers = m_answers, send = std::move(send)](HttpRequest request,
                                                             std::stop_token stop) {
            return sendAndNote(answers, send, std::move(request), std::move(stop));
        };
    }
    static Task<HttpResponse> sendAndNote(std::shared_ptr<QStringList> answers, HttpSend send,
                                          HttpRequest request, std::stop_token stop)
    {
        HttpResponse response = co_await send(std::move(request), std::move(stop));
        const QString status =
            QJsonDocument::fromJson(response.body)[QLatin1String("status")].toString();
        answers->append(QStringLiteral("%1 %2").arg(response.status).arg(status));
        co_return response;
    }
    /// All answers so far.
    [[nodiscard]] QString answers() const { return m_answers->join(u", "_qs); }

    Outcome<Results> search(const char *keyword)
    {
        return Outcome(m_client->search(QString::fromUtf8(keyword), u"US"_qs, 100, {}));
    }
    std::optional<SavedResults> saved(const QString &keyword, const QString &country)
    {
        return Outcome(m_client->savedResults(keyword, country, {})).wait().value();
    }
    /// What the App Store itself answers.
    Results atTheAppStore(const char *keyword)
    {
        Outcome outcome(m_appStore->search(QString::fromUtf8(keyword), u"US"_qs, 100, {}));
        return outcome.wait().value();
    }

    QTemporaryDir m_folder;
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
    QString m_cachePath = m_folder.filePath(u"ranked_apps_cache_v1.json"_qs);
    std::unique_ptr<NetworkHttp> m_http = std::make_unique<NetworkHttp>(
        NetworkHttp::Options{u"1"_qs, service().resourceFolder() + u"/TrustedCertificates.pem"_qs});
    std::shared_ptr<SteeredClock> m_clock = std::make_shared<SteeredClock>();
    std::shared_ptr<ITunesClientProtocol> m_appStore =
        std::make_shared<ITunesClient>(ITunesClient::Arguments{
            QUrl(service().appStoreOrigin()), m_http->sender(),
            std::make_shared<ITunesTrafficController>(std::make_shared<SystemClock>())});
    std::unique_ptr<ResearchClient> m_client;
    std::shared_ptr<QStringList> m_answers = std::make_shared<QStringList>();
};

TEST_F(ResearchOverTls, AColdKeywordIsHeldAndCostsOneRequest)
{
    const Results found = search("collage maker").wait().value();
    EXPECT_EQ(found.size(), 100);
    EXPECT_EQ(found, atTheAppStore("collage maker")) << "every field comes through as it is";
    EXPECT_EQ(answers(), u"200 ready");
    EXPECT_THAT(m_clock->waits(), IsEmpty());
}

TEST_F(ResearchOverTls, WhatOneClientAskedForIsReadyForTheNext)
{
    const Results found = search("habit tracker").wait().value();
    const int searches = service().searches();
    const Date fetchedAt = saved(u"habit tracker"_qs, u"US"_qs)->fetchedAt;
    EXPECT_NEAR((m_clock->now() - fetchedAt).count(), 0, 10);

    m_cachePath = m_folder.filePath(u"another.json"_qs);
    openClient();
    EXPECT_EQ(search(" Habit Tracker\n").wait().value(), found);
    EXPECT_EQ(service().searches(), searches);
    EXPECT_EQ(saved(u"habit tracker"_qs, u"US"_qs)->fetchedAt, fetchedAt);
    EXPECT_EQ(answers(), u"200 ready, 200 ready");
    search("habit tracker").wait();
    EXPECT_EQ(answers(), u"200 ready, 200 ready") << "the client has it now";
}

TEST_F(ResearchOverTls, AnOlderResultIsNotTakenButTheNewOneWaitedFor)
{
    service().setState(uR"({"state":"stale","place":3})"_qs, u"budget planner"_qs);
    m_clock->onWait = [](std::size_t) {
        service().sql(uR"(update aso_research.setting set pace = '50 milliseconds';
            update aso_research.fetch_budget set worker = null, worker_until = null)"_qs);
        return Waits::LeftOut;
    };
    const Results found = search("budget planner").wait().value();
    EXPECT_EQ(found, atTheAppStore("budget planner"));
    EXPECT_EQ(answers(), u"200 stale, 200 ready");
    EXPECT_THAT(m_clock->waits(), ElementsAre(11));
}

TEST_F(ResearchOverTls, WhileTheAppStoreBlocksTheServiceOneKeywordWaitsAndOthersAreServed)
{
    const Results found = search("recipe box").wait().value();
    m_cachePath.clear();
    openClient();
    m_answers->clear();
    // A block of a minute, the keyword's turn and a second.
    EXPECT_EQ(search("sample:throttled notes").wait().failureText(), queuedText(2));
    EXPECT_EQ(search("sample:throttled notes").wait().failureText(), queuedText(2));
    EXPECT_EQ(answers(), u"200 unavailable") << "it is not asked for again before its time";
    EXPECT_EQ(search("recipe box").wait().value(), found);
    EXPECT_THAT(m_clock->waits(), IsEmpty());
}

TEST_F(ResearchOverTls, AKeywordThatFailsThreeTimesHasFailedForTenMinutes)
{
    service().sql(uR"(update aso_research.setting
        set pace = '50 milliseconds', retry_delay = '100 milliseconds')"_qs);
    const int searches = service().searches();
    EXPECT_EQ(search("sample:error sudoku").wait().failureText(), queuedText(10));
    EXPECT_EQ(service().searches(), searches + 3);
    EXPECT_EQ(answers(), u"200 failed");
    EXPECT_EQ(search("sudoku").wait().value(), atTheAppStore("sudoku"));
}

TEST_F(ResearchOverTls, TooManyRequestsHoldBackEveryKeyword)
{
    service().setState(uR"({"state":"40 outstanding"})"_qs, u"word game"_qs);
    EXPECT_EQ(search("word game").wait().failureText(), queuedText(1));
    EXPECT_EQ(search("another word game").wait().failureText(), queuedText(1));
    EXPECT_EQ(answers(), u"429 unavailable");
}

TEST_F(ResearchOverTls, ADatabaseOutOfReachIsWaitedFor)
{
    service().setState(uR"({"state":"database out of reach"})"_qs, u"sleep sounds"_qs);
    m_clock->onWait = [](std::size_t) {
        service().setState(uR"({"state":"never asked"})"_qs, u"sleep sounds"_qs);
        return Waits::LeftOut;
    };
    EXPECT_EQ(search("sleep sounds").wait().value(), atTheAppStore("sleep sounds"));
    EXPECT_EQ(answers(), u"503 unavailable, 200 ready");
    EXPECT_THAT(m_clock->waits(), ElementsAre(10));
}

TEST_F(ResearchOverTls, AFullQueueAndASpentShareAreSaidInMinutes)
{
    service().setState(uR"({"state":"queue full"})"_qs, u"guitar tuner"_qs);
    EXPECT_EQ(search("guitar tuner").wait().failureText(), queuedText(10));
    service().setState(uR"({"state":"share spent"})"_qs, u"chord finder"_qs);
    EXPECT_EQ(search("chord finder").wait().failureText(), queuedText(60));
    EXPECT_EQ(answers(), u"200 unavailable, 200 unavailable");
}

TEST_F(ResearchOverTls, AHeldQuestionThatIsCutOffFailsAndTheNextIsServed)
{
    service().sql(u"update aso_research.setting set lease = '2 seconds'"_qs);
    Outcome held = search("sample:slow running");
    service().waitForFetch();
    ASSERT_FALSE(held.isDone()) << held.failureText().toStdString();
    service().kill();
    EXPECT_TRUE(held.wait().holds<TransportError>()) << held.failureText().toStdString();
    service().start();
    EXPECT_EQ(search("journal").wait(60s).value(), atTheAppStore("journal"));
}

TEST_F(ResearchOverTls, AnotherAuthorityIsNotTrusted)
{
    m_http = std::make_unique<NetworkHttp>(NetworkHttp::Options{u"1"_qs, {}});
    openClient();
    EXPECT_EQ(search("compass").wait().failureText(),
              u"A secure connection to the server “127.0.0.1” could not be made: its certificate "
              "is not trusted."_qs);
}

/// A service that holds no question, so that whoever asks first has to ask again.
class ResearchWithoutHolding : public ResearchOverTls
{
protected:
    static void SetUpTestSuite() { service().start(noHolding); }
    static inline const QStringList noHolding{u"ASO_RESEARCH_HOLD_MS=0"_qs};
};

TEST_F(ResearchWithoutHolding, IsPendingAndThenReady)
{
    service().sql(u"update aso_research.setting set pace = '500 milliseconds'"_qs);
    const Results found = search("flash cards").wait().value();
    EXPECT_EQ(found, atTheAppStore("flash cards"));
    EXPECT_EQ(answers(), u"202 pending, 200 ready");
    EXPECT_THAT(m_clock->waits(), ElementsAre(2));
}

TEST_F(ResearchWithoutHolding, AServiceKilledInTheMiddleOfAFetchServesTheThirdAttempt)
{
    service().sql(uR"(update aso_research.setting
        set pace = '3 seconds', lease = '2 seconds')"_qs);
    const int searches = service().searches();
    m_clock->onWait = [](std::size_t number) {
        if (number != 1)
            return Waits::Real;
        // The App Store takes three seconds for this keyword, so the fetch is still under way.
        service().waitForFetch();
        service().kill();
        service().start(noHolding);
        return Waits::Real;
    };
    const Results found = search("sample:slow meditation").wait(60s).value();
    EXPECT_EQ(found, atTheAppStore("meditation"));
    EXPECT_EQ(answers(), u"202 pending, 202 pending, 200 ready");
    EXPECT_THAT(m_clock->waits(), ElementsAre(4, 4));
    EXPECT_EQ(service().searches(), searches + 3) << "twice for the service, once for this test";
}

} // namespace
} // namespace veltrix
