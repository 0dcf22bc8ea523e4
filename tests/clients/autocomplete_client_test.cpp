// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/autocomplete_client.h"

#include "clients/property_list.h"
#include "clients/request_url.h"
#include "effects/atomic_file.h"
#include "json/json_writer.h"
#include "support/fake_http.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QUrlQuery>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using Evidence = std::optional<AutocompleteEvidence>;

const Date noon = dateFromUnixSeconds(1'795'262'400); // 2026-11-21T12:00:00Z
constexpr std::int64_t today = 20'778;

/// An answer in the service's form.
HttpResponse hints(const QStringList &terms)
{
    QString items;
    for (const QString &term : terms) {
        items += QStringLiteral("<dict><key>displayTerm</key><string>%1</string>"
                                "<key>term</key><string>%1</string></dict>\n")
                     .arg(term.toHtmlEscaped());
    }
    const QString body =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<!DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST 1.0//EN\" "
                       "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                       "<plist version=\"1.0\"><dict><key>title</key><string>Suggestions</string>"
                       "<key>hints</key><array>%1</array></dict></plist>")
            .arg(items);
    return FakeHttp::response(200, body.toUtf8());
}

class AutocompleteClientTest : public testing::Test
{
protected:
    AutocompleteClientTest()
    {
        m_http.answerWith(hints({QStringLiteral("other"), QStringLiteral("photos")}));
        open();
    }

    void open() { openAt(path()); }
    void openAt(const QString &path)
    {
        m_files->waitUntilFinished();
        m_client = std::make_unique<AutocompleteClient>(AutocompleteClient::Arguments{
            m_http.sender(), m_clock, path, QUrl(QStringLiteral("https://hints.example/wa/hints")),
            m_files});
    }
    [[nodiscard]] QString path() const
    {
        return m_folder.filePath(QStringLiteral("autocomplete_visibility_v2.json"));
    }
    void writeState(const AutocompleteState &state) { writeFileAtomically(path(), toJson(state)); }

    Outcome<Evidence> observe(const char *keyword = "photos", const char *country = "us",
                              std::stop_token stop = {})
    {
        return Outcome(m_client->observe(QString::fromUtf8(keyword), QString::fromUtf8(country),
                                         std::move(stop)));
    }
    /// Observes and waits until the run has ended.
    Evidence observed(const char *keyword = "photos", const char *country = "us")
    {
        const auto outcome = observe(keyword, country);
        m_clock->runUntilIdle();
        m_files->waitUntilFinished();
        return outcome.value();
    }
    /// What was typed, in order.
    [[nodiscard]] QStringList typed() const
    {
        QStringList terms;
        for (const auto &sent : m_http.sent()) {
            terms.append(QUrlQuery(sent.request.url)
                             .queryItemValue(QStringLiteral("term"), QUrl::FullyDecoded));
        }
        return terms;
    }

    QTemporaryDir m_folder;
    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>(noon);
    FakeHttp m_http{m_clock};
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
    std::unique_ptr<AutocompleteClient> m_client;
};

TEST_F(AutocompleteClientTest, TypesThePrefixesOfTheKeywordInItsStorefront)
{
    const Evidence evidence = observed("  Photo+Bär ", "de");
    EXPECT_EQ(typed(),
              (QStringList{QStringLiteral("ph"), QStringLiteral("phot"), QStringLiteral("photo+"),
                           QStringLiteral("photo+b"), QStringLiteral("photo+bär")}));
    const HttpRequest &last = m_http.sent().back().request;
    EXPECT_EQ(absoluteString(last.url),
              QStringLiteral("https://hints.example/wa/hints?clientApplication=Software&"
                             "term=photo%2Bb%C3%A4r"));
    EXPECT_EQ(last.method, HttpRequest::Method::Get);
    EXPECT_EQ(last.headers, (QList<HttpHeader>{{"X-Apple-Store-Front", "143443-4,29"}}));
    EXPECT_EQ(evidence->keyword, QStringLiteral("photo+bär"));
    EXPECT_EQ(evidence->country, QStringLiteral("DE"));
    EXPECT_EQ(evidence->storefront, QStringLiteral("143443"));
    EXPECT_EQ(evidence->language, QStringLiteral("de-DE"));
    EXPECT_EQ(evidence->plannedProbes, 5);
    EXPECT_FALSE(evidence->possibleBrand);
}

TEST_F(AutocompleteClientTest, AProbeHoldsWhatWasSuggestedAndWhereTheKeywordStood)
{
    const Evidence evidence = observed();
    ASSERT_EQ(evidence->probes.size(), 5);
    const AutocompleteProbe &first = evidence->probes.front();
    EXPECT_EQ(first.prefix, QStringLiteral("ph"));
    EXPECT_EQ(first.suggestions, (QStringList{QStringLiteral("other"), QStringLiteral("photos")}));
    EXPECT_EQ(first.fetchedAt, noon);
    EXPECT_EQ(first.exactRank, 2);
    // Rank 2 everywhere: 100 ÷ log₂ 3, whatever the weights.
    EXPECT_EQ(evidence->dailyScore, 63);
    EXPECT_EQ(evidence->observedDays, 1);
    EXPECT_EQ(evidence->scoreSpread, 0);
    EXPECT_EQ(observed("nowhere")->probes.front().exactRank, std::nullopt);
    EXPECT_EQ(observed("nowhere")->dailyScore, 0);
}

TEST_F(AutocompleteClientTest, RequestsAreASecondApart)
{
    const auto first = observe();
    m_clock->runUntilIdle();
    const auto second = observe("nowhere");
    m_clock->runUntilIdle();
    ASSERT_EQ(m_http.count(), 10);
    for (size_t i = 0; i < 10; ++i)
        EXPECT_NEAR((m_http.sent()[i].at - noon).count(), double(i), 1e-5);
}

TEST_F(AutocompleteClientTest, ANonemptyAnswerIsUsedAgainForADay)
{
    observed();
    m_clock->jumpTo(noon + Seconds(86'399));
    const Evidence evidence = observed();
    EXPECT_EQ(m_http.count(), 5);
    EXPECT_EQ(evidence->probes.front().fetchedAt, noon);
    m_clock->jumpTo(noon + Seconds(86'400));
    EXPECT_EQ(observed()->probes.front().fetchedAt, noon + Seconds(86'400));
    EXPECT_EQ(m_http.count(), 6);
}

TEST_F(AutocompleteClientTest, AnEmptyAnswerIsAProbeButIsNeverUsedAgain)
{
    m_http.answerWith(hints({}));
    const Evidence evidence = observed();
    EXPECT_EQ(evidence->probes.size(), 5);
    EXPECT_EQ(evidence->dailyScore, 0);
    observed();
    EXPECT_EQ(m_http.count(), 10);
    AutocompleteState state;
    state.cache.insert({QStringLiteral("US:no"), {{}, noon}});
    state.cache.insert({QStringLiteral("US:now"), {{QStringLiteral("now")}, noon}});
    writeState(state);
    open();
    EXPECT_EQ(observed("now")->probes.size(), 2);
    EXPECT_EQ(typed().mid(10), QStringList{QStringLiteral("no")});
}

TEST_F(AutocompleteClientTest, AnswersOfOneStorefrontAreNotThoseOfAnother)
{
    observed("ab", "us");
    observed("ab", "gb");
    EXPECT_EQ(m_http.count(), 2);
}

TEST_F(AutocompleteClientTest, NoMoreThanTwoHundredRequestsAreSentOnADay)
{
    for (int i = 0; i < 50; ++i)
        observed(("word number " + QByteArray::number(i) + " of many").constData());
    // Common beginnings are asked for once; the rest uses the budget up.
    for (int i = 0; i < 60; ++i)
        observed((QByteArray::number(i * 7919) + "abcdef").constData());
    EXPECT_EQ(m_http.count(), 200);
    EXPECT_EQ(m_client->state().requests, 200);
    EXPECT_EQ(m_client->state().budgetDay, today);
    EXPECT_EQ(observed("zz top"), std::nullopt);
    EXPECT_EQ(m_http.count(), 200);
    open();
    EXPECT_EQ(observed("zz top"), std::nullopt)
        << "the budget is the installation's, not the run's";
    // Another UTC day, another budget.
    m_clock->jumpTo(noon + Seconds(12 * 3600));
    EXPECT_EQ(observed("zz top")->probes.size(), 5);
    EXPECT_EQ(m_client->state().requests, 5);
    EXPECT_EQ(m_client->state().budgetDay, today + 1);
}

TEST_F(AutocompleteClientTest, ABudgetThatEndsInTheMiddleGivesSmallerEvidenceWithoutAScore)
{
    AutocompleteState state;
    state.budgetDay = today;
    state.requests = 197;
    writeState(state);
    open();
    const Evidence evidence = observed();
    EXPECT_EQ(evidence->probes.size(), 3);
    EXPECT_EQ(evidence->plannedProbes, 5);
    EXPECT_EQ(evidence->dailyScore, std::nullopt);
    EXPECT_EQ(evidence->observedDays, 0);
}

TEST_F(AutocompleteClientTest, ARequestThatWaitsPastMidnightCountsForTheNewDay)
{
    m_clock->jumpTo(noon + Seconds(43'199.5));
    observed("abc");
    EXPECT_EQ(m_http.count(), 2);
    EXPECT_EQ(m_client->state().budgetDay, today + 1);
    EXPECT_EQ(m_client->state().requests, 1);
}

class Refused : public AutocompleteClientTest, public testing::WithParamInterface<int>
{
};

TEST_P(Refused, LeavesTheServiceAloneForAQuarterOfAnHourAlsoAfterARestart)
{
    m_http.answerWith(FakeHttp::response(GetParam()));
    EXPECT_EQ(observed(), std::nullopt);
    EXPECT_EQ(m_http.count(), 1);
    m_http.answerWith(hints({}));
    m_clock->advance(Seconds(899.9));
    EXPECT_EQ(observed(), std::nullopt);
    open();
    EXPECT_EQ(observed(), std::nullopt);
    EXPECT_EQ(m_http.count(), 1);
    m_clock->advance(Seconds(0.1));
    EXPECT_TRUE(observed().has_value());
    EXPECT_EQ(m_client->state().blockedUntil, std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Statuses, Refused, testing::Values(403, 429, 503));

TEST_F(AutocompleteClientTest, ALongerRetryAfterIsHonouredUpToADay)
{
    const auto blockedFor = [this](const char *retryAfter) {
        m_http.answerWith(FakeHttp::response(429, "", {HttpHeader{"Retry-After", retryAfter}}));
        const Date before = m_clock->now();
        m_clock->advance(Seconds(2));
        observed();
        const Seconds blocked = *m_client->state().blockedUntil - before - Seconds(2);
        m_clock->jumpTo(*m_client->state().blockedUntil);
        return std::round(blocked.count());
    };
    EXPECT_EQ(blockedFor("60"), 900);
    EXPECT_EQ(blockedFor("-1"), 900);
    EXPECT_EQ(blockedFor("later"), 900);
    EXPECT_EQ(blockedFor("3600"), 3600);
    EXPECT_EQ(blockedFor("99999999"), 86'400);
}

TEST_F(AutocompleteClientTest, AFailureEndsTheRunWithWhatThereIs)
{
    int count = 0;
    m_http.answerWith([&count](const HttpRequest &) -> HttpResponse {
        if (++count <= 2)
            return hints({QStringLiteral("photos")});
        throw TransportError(QStringLiteral("The network is not available."));
    });
    const Evidence evidence = observed();
    EXPECT_EQ(evidence->probes.size(), 2);
    EXPECT_EQ(evidence->dailyScore, std::nullopt);
    EXPECT_EQ(m_http.count(), 3);
    EXPECT_EQ(m_client->state().blockedUntil, std::nullopt);
    m_http.answerWith(hints({QStringLiteral("photos")}));
    EXPECT_TRUE(observed("again").has_value());
}

TEST_F(AutocompleteClientTest, AnswersThatAreNoneEndTheRunToo)
{
    const std::vector<HttpResponse> answers = {
        FakeHttp::response(200, ""),
        FakeHttp::response(200, "<html>Sign in</html>"),
        FakeHttp::response(200, "<plist><dict><key>hints</key><string>x</string></dict></plist>"),
        FakeHttp::response(200, hints({QStringLiteral("a")}).body.chopped(20)),
        FakeHttp::response(404, ""),
        FakeHttp::response(500, hints({}).body)};
    for (const HttpResponse &answer : answers) {
        m_http.answerWith(answer);
        m_clock->advance(AutocompleteClient::pauseTime);
        const int before = m_http.count();
        EXPECT_EQ(observed(), std::nullopt) << answer.body.toStdString();
        EXPECT_EQ(m_http.count(), before + 1);
    }
}

TEST_F(AutocompleteClientTest, TwoFailuresInARowPauseForTenMinutesSoThatNobodyWaitsForTheRest)
{
    m_http.setLatency(AutocompleteClient::requestTimeout);
    m_http.answerWith([](const HttpRequest &) -> HttpResponse {
        throw TransportError(QStringLiteral("did not answer in time"));
    });
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(observed(("k" + QByteArray::number(i)).constData()), std::nullopt);
    EXPECT_EQ(m_http.count(), 2);
    EXPECT_NEAR((m_clock->now() - noon).count(), 20, 1e-3) << "2,000 s without the pause";
    // After it one request finds out; the next failure is the third in a row.
    m_clock->advance(Seconds(599.9));
    observed("too early");
    EXPECT_EQ(m_http.count(), 2);
    m_clock->advance(Seconds(0.1));
    observed("again");
    observed("and again");
    EXPECT_EQ(m_http.count(), 3);
    m_clock->advance(AutocompleteClient::pauseTime);
    m_http.answerWith(hints({QStringLiteral("photos")}));
    m_http.setLatency(Seconds(0));
    EXPECT_EQ(observed()->probes.size(), 5);
}

TEST_F(AutocompleteClientTest, OneFailureBetweenAnswersPausesNothing)
{
    for (int i = 0; i < 4; ++i) {
        m_http.answerWith(FakeHttp::response(500));
        observed(("a" + QByteArray::number(i)).constData());
        m_http.answerWith(hints({}));
        EXPECT_TRUE(observed(("b" + QByteArray::number(i)).constData()).has_value());
    }
    EXPECT_EQ(m_http.count(), 8);
}

TEST_F(AutocompleteClientTest, ASignInPageDoesNotUseUpTheBudgetOfTheDay)
{
    m_http.answerWith(FakeHttp::response(200, "<html>Sign in</html>"));
    for (int i = 0; i < 200; ++i)
        observed(("k" + QByteArray::number(i)).constData());
    EXPECT_EQ(m_client->state().requests, 2);
}

TEST_F(AutocompleteClientTest, AStoppedRequestIsNoFailure)
{
    for (int i = 0; i < 3; ++i) {
        std::stop_source stop;
        m_http.hold();
        const auto outcome = observe("photos", "us", stop.get_token());
        stop.request_stop();
        EXPECT_TRUE(outcome.isCancelled());
        m_clock->advance(Seconds(1));
    }
    m_http.release();
    EXPECT_EQ(observed()->probes.size(), 5);
}

TEST_F(AutocompleteClientTest, WaitsThatAClockSetBackMovedAYearAheadAreIgnored)
{
    const Date ahead = noon + Seconds(365 * 86'400.0);
    // A refusal, a pause, the spacing and the budget, all of them under the wrong clock.
    m_clock->jumpTo(ahead);
    observed();
    EXPECT_EQ(m_client->state().budgetDay, today + 365);
    m_http.answerWith(FakeHttp::response(429, "", {HttpHeader{"Retry-After", "86400"}}));
    observed("refused");
    EXPECT_TRUE(m_client->state().blockedUntil.has_value());
    m_clock->jumpTo(noon);
    m_http.answerWith(hints({QStringLiteral("photos")}));
    const int before = m_http.count();
    EXPECT_EQ(observed("refused")->probes.size(), 5);
    EXPECT_EQ(m_client->state().budgetDay, today);
    EXPECT_EQ(m_client->state().requests, 5);
    EXPECT_NEAR((m_clock->now() - noon).count(), 5, 1) << "the spacing is a second, not a year";
    // What was fetched in the year to come is asked for again, not used until then.
    EXPECT_LT(observed()->probes.front().fetchedAt, noon + Seconds(60));
    EXPECT_EQ(m_http.count(), before + 10);
    EXPECT_EQ(observed()->observedDays, 1);

    m_clock->jumpTo(ahead);
    m_http.answerWith(FakeHttp::response(500));
    observed("x");
    observed("y");
    m_clock->jumpTo(noon + Seconds(3600));
    m_http.answerWith(hints({QStringLiteral("photos")}));
    EXPECT_TRUE(observed("z").has_value()) << "the pause was under the wrong clock too";
}

TEST_F(AutocompleteClientTest, AWaitInTheFileThatIsLongerThanAnyIsIgnored)
{
    AutocompleteState state;
    state.blockedUntil = noon + AutocompleteClient::longestBlock + Seconds(1);
    state.budgetDay = today + 365;
    state.requests = 200;
    writeState(state);
    open();
    EXPECT_EQ(observed()->probes.size(), 5);
    EXPECT_EQ(m_client->state().requests, 5);
}

TEST_F(AutocompleteClientTest, ADayScoredWhollyFromYesterdaysAnswersIsNotAnObservedDay)
{
    EXPECT_EQ(observed()->observedDays, 1);
    m_clock->jumpTo(noon + Seconds(86'000));
    const Evidence evidence = observed();
    EXPECT_EQ(m_http.count(), 5) << "all five answers are yesterday's";
    EXPECT_EQ(evidence->probes.size(), 5);
    EXPECT_EQ(evidence->observedDays, 1);
    EXPECT_EQ(evidence->dailyScore, std::nullopt);
    EXPECT_EQ(m_client->state().history.at(QStringLiteral("US:photos")).size(), 1);
    // A single answer of today makes the day an observed one.
    m_clock->jumpTo(noon + Seconds(86'400.5));
    EXPECT_EQ(observed()->observedDays, 2);
    EXPECT_EQ(m_http.count(), 6);
}

TEST_F(AutocompleteClientTest, ACountryWithoutANumberGetsNoProbes)
{
    EXPECT_EQ(observed("photos", "XX"), std::nullopt);
    EXPECT_EQ(observed("photos", ""), std::nullopt);
    EXPECT_EQ(observed(" ", "us"), std::nullopt);
    EXPECT_EQ(m_http.count(), 0);
}

TEST_F(AutocompleteClientTest, ASecondRunDoesNotStartMeanwhile)
{
    m_http.hold();
    const auto first = observe();
    EXPECT_EQ(observe("other").value(), std::nullopt);
    m_http.release();
    m_clock->runUntilIdle();
    EXPECT_TRUE(first.value().has_value());
    EXPECT_EQ(m_http.count(), 5);
    EXPECT_TRUE(observed("other").has_value());
}

TEST_F(AutocompleteClientTest, AStopEndsARunAtOnceAndFreesTheClient)
{
    for (const bool isWaiting : {true, false}) {
        std::stop_source stop;
        if (!isWaiting)
            m_http.hold();
        const auto outcome = observe(isWaiting ? "waiting" : "sending", "us", stop.get_token());
        EXPECT_FALSE(outcome.isDone());
        stop.request_stop();
        EXPECT_TRUE(outcome.isCancelled());
        EXPECT_EQ(m_clock->sleepers(), 0);
        m_clock->advance(Seconds(10));
    }
    // The request that was stopped has been counted, also on disk.
    EXPECT_EQ(m_client->state().requests, 2);
    m_files->waitUntilFinished();
    EXPECT_EQ(AutocompleteStateFile(path()).load().requests, 2);
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_TRUE(observe("photos", "us", stopped.get_token()).isCancelled());
}

TEST_F(AutocompleteClientTest, ARunEndsWithTheClientAndItsRequestStaysCounted)
{
    m_http.hold();
    const auto outcome = observe();
    m_client.reset();
    EXPECT_TRUE(outcome.isCancelled());
    EXPECT_EQ(m_http.inFlight(), 0);
    m_files->waitUntilFinished();
    EXPECT_EQ(AutocompleteStateFile(path()).load().requests, 1);
}

TEST_F(AutocompleteClientTest, FromTheThirdObservedDayOnTheMedianIsReported)
{
    // The score of a day at which the keyword is first everywhere is 100, nowhere 0.
    const auto day = [this](int number, bool isFirst) {
        m_clock->jumpTo(noon + Seconds(86'500.0 * number + 10));
        m_http.answerWith(hints({isFirst ? QStringLiteral("photos") : QStringLiteral("none")}));
        return *observed();
    };
    EXPECT_EQ(day(0, true).dailyScore, 100);
    const AutocompleteEvidence second = day(1, false);
    EXPECT_EQ(second.dailyScore, 0) << "two days: today's score";
    EXPECT_EQ(second.observedDays, 2);
    EXPECT_EQ(second.scoreSpread, 100);
    const AutocompleteEvidence third = day(2, true);
    EXPECT_EQ(third.dailyScore, 100) << "the median of 100, 0 and 100";
    EXPECT_EQ(third.observedDays, 3);
    EXPECT_EQ(day(3, false).dailyScore, 50) << "the mean of the middle two";
    // A second run of one day replaces its score.
    EXPECT_EQ(day(3, false).observedDays, 4);
    EXPECT_EQ(m_client->state().history.at(QStringLiteral("US:photos")).size(), 4);
}

TEST_F(AutocompleteClientTest, OfManyObservedDaysTheLastSevenCountTodayIncluded)
{
    m_http.answerWith(hints({QStringLiteral("photos")}));
    for (int day = 0; day < 10; ++day) {
        m_clock->jumpTo(noon + Seconds(86'500.0 * day + 10));
        EXPECT_EQ(observed()->observedDays, std::min(day + 1, 7)) << day;
    }
    // Four days without a check, and the day of the next one.
    m_clock->jumpTo(noon + Seconds(86'500.0 * 14 + 10));
    EXPECT_EQ(observed()->observedDays, 3);
}

TEST_F(AutocompleteClientTest, ScoresThatNoDayReadsAnyMoreAreLeftOut)
{
    AutocompleteState state;
    const AutocompleteDailyScore past{today - 7, 10, noon};
    const AutocompleteDailyScore read{today - 6, 20, noon};
    const AutocompleteDailyScore ahead{today + 1, 30, noon};
    state.history = {{QStringLiteral("US:photos"), {past, read}},
                     {QStringLiteral("US:not tracked any more"), {past}},
                     {QStringLiteral("US:of a wrong clock"), {past, ahead}}};
    writeState(state);
    open();
    EXPECT_EQ(observed()->observedDays, 2);
    const auto history = AutocompleteStateFile(path()).load().history;
    EXPECT_EQ(history.size(), 2U);
    EXPECT_EQ(history.at(QStringLiteral("US:photos")).constFirst(), read);
    EXPECT_EQ(history.at(QStringLiteral("US:of a wrong clock")), QList{ahead});
}

TEST_F(AutocompleteClientTest, NothingIsReadBeforeTheFirstRun)
{
    AutocompleteState state;
    state.history = {{QStringLiteral("US:photos"), {{today - 1, 10, noon}}}};
    open();
    writeState(state);
    EXPECT_EQ(observed()->observedDays, 2);
}

TEST_F(AutocompleteClientTest, ABlockedDayStillReportsTheMedianOfEarlierOnes)
{
    AutocompleteState state;
    state.blockedUntil = noon + Seconds(60);
    state.history.insert({QStringLiteral("US:photos"),
                          {{today - 3, 10, noon}, {today - 2, 20, noon}, {today - 1, 60, noon}}});
    writeState(state);
    open();
    const Evidence evidence = observed();
    EXPECT_EQ(m_http.count(), 0);
    EXPECT_TRUE(evidence->probes.isEmpty());
    EXPECT_EQ(evidence->dailyScore, 20);
    EXPECT_EQ(evidence->scoreSpread, 50);
}

TEST_F(AutocompleteClientTest, TheStateFileHoldsTheNamedKeysAndAnOldHintIsDropped)
{
    AutocompleteState state;
    state.cache.insert({QStringLiteral("US:old"), {{QStringLiteral("x")}, noon - Seconds(90'000)}});
    writeState(state);
    open();
    observed("ab");
    EXPECT_EQ(readWholeFile(path()),
              R"({"cache":{"US:ab":{"terms":["other","photos"],"fetchedAt":816955200}},)"
              R"("history":{},"budgetDay":20778,"requests":1})");
}

TEST_F(AutocompleteClientTest, ABrokenStateFileIsAFreshStart)
{
    for (const char *content : {"", "{}", "[", R"({"cache":{},"history":{},"budgetDay":1})"}) {
        writeFileAtomically(path(), content);
        open();
        EXPECT_EQ(m_client->state(), AutocompleteState()) << content;
    }
    EXPECT_TRUE(observed().has_value());
}

TEST_F(AutocompleteClientTest, ADamagedHistoryIsKeptBeforeItIsReplaced)
{
    writeFileAtomically(path(), R"({"history":{"US:tide":[)");
    open();
    const QFileInfo file(path());
    EXPECT_EQ(file.dir().entryList(QDir::Files).size(), 1) << "nothing is replaced yet";
    EXPECT_TRUE(observed().has_value());
    const QStringList kept =
        file.dir().entryList({file.completeBaseName() + QStringLiteral(".unreadable-*.json")});
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(readWholeFile(file.dir().filePath(kept.constFirst())), R"({"history":{"US:tide":[)");
    EXPECT_NE(AutocompleteStateFile(path()).load(), AutocompleteState());
    EXPECT_EQ(file.dir().entryList(QDir::Files).size(), 2);
}

TEST_F(AutocompleteClientTest, AHistoryThatCannotBeReachedIsNotReplaced)
{
    // A folder in its place stands for a disk that does not answer.
    QDir().mkpath(path());
    open();
    EXPECT_TRUE(observed().has_value());
    EXPECT_TRUE(QFileInfo(path()).isDir());
    EXPECT_EQ(QFileInfo(path()).dir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
}

TEST_F(AutocompleteClientTest, AFolderThatIsNotThereIsNotMade)
{
    const QString folder = QFileInfo(path()).path() + QStringLiteral("/unmounted");
    openAt(folder + QStringLiteral("/history.json"));
    EXPECT_TRUE(observed().has_value());
    EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST_F(AutocompleteClientTest, AFolderThatCannotBeWrittenHarmsNothing)
{
    openAt(QStringLiteral("/proc/none/state.json"));
    EXPECT_TRUE(observed().has_value());
}

TEST(SearchHints, AreReadInTheOlderAndTheNewerForm)
{
    const auto parse = [](const char *array) {
        return parseSearchHints(QByteArray("<plist><dict><key>title</key><string>t</string>"
                                           "<key>hints</key>") +
                                array + "</dict></plist>");
    };
    EXPECT_EQ(parse("<array/>"), QStringList());
    EXPECT_EQ(
        parse("<array><dict><key>term</key><string>a</string><key>priority</key>"
              "<integer>6859</integer><key>url</key><string>https: //x?a&amp;b</string></dict>"
              "<dict><key>displayTerm</key><string>B</string><key>term</key>"
              "<string>b</string></dict></array>"),
        (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(parse("<array><dict/><string>x</string><dict><key>term</key><integer>1</integer>"
                    "</dict><dict><key>term</key><string>c</string></dict></array>"),
              QStringList{QStringLiteral("c")});
    EXPECT_THROW(parse("<dict/>"), PropertyListError);
    EXPECT_THROW(parseSearchHints("<plist><array/></plist>"), PropertyListError);
}

} // namespace
} // namespace veltrix
