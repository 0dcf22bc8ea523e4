// SPDX-License-Identifier: GPL-3.0-or-later
// Suggestions for what somebody types, beside the runs that measure.
#include "clients/autocomplete_client.h"

#include "support/fake_http.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <QUrlQuery>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace veltrix
{
namespace
{

using Terms = std::optional<QStringList>;

HttpResponse hints(const QStringList &terms)
{
    QString items;
    for (const QString &term : terms)
        items += QStringLiteral("<dict><key>term</key><string>%1</string></dict>").arg(term);
    return FakeHttp::response(200, QStringLiteral("<plist version=\"1.0\"><dict><key>hints</key>"
                                                  "<array>%1</array></dict></plist>")
                                       .arg(items)
                                       .toUtf8());
}

class AutocompleteSuggestTest : public testing::Test
{
protected:
    AutocompleteSuggestTest()
    {
        m_http.answerWith(hints({QStringLiteral("photo editor"), QStringLiteral("photos")}));
        m_client = std::make_unique<AutocompleteClient>(AutocompleteClient::Arguments{
            m_http.sender(), m_clock, QString(), QUrl(QStringLiteral("https://hints.example/"))});
    }

    Outcome<Terms> suggest(const QString &prefix, std::stop_token stop = {})
    {
        return Outcome(m_client->suggest(prefix, QStringLiteral("us"), std::move(stop)));
    }
    Outcome<std::optional<AutocompleteEvidence>> observe(const char *keyword)
    {
        return Outcome(m_client->observe(QString::fromUtf8(keyword), QStringLiteral("us"), {}));
    }
    [[nodiscard]] QStringList typed() const
    {
        QStringList terms;
        for (const auto &sent : m_http.sent())
            terms.append(QUrlQuery(sent.request.url)
                             .queryItemValue(QStringLiteral("term"), QUrl::FullyDecoded));
        return terms;
    }

    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>();
    FakeHttp m_http{m_clock};
    std::unique_ptr<AutocompleteClient> m_client;
};

TEST_F(AutocompleteSuggestTest, APrefixGetsTheTermsOfTheServiceInItsOrder)
{
    EXPECT_EQ(suggest(QStringLiteral(" Phot ")).value(),
              (QStringList{QStringLiteral("photo editor"), QStringLiteral("photos")}));
    EXPECT_EQ(typed(), QStringList{QStringLiteral("phot")});
    m_http.answerWith(hints({}));
    const auto none = suggest(QStringLiteral("zzz"));
    m_clock->runUntilIdle();
    EXPECT_EQ(none.value(), QStringList()) << "an empty answer is an answer";
}

TEST_F(AutocompleteSuggestTest, TypingAndMeasuringShareTheKeptAnswers)
{
    suggest(QStringLiteral("ph"));
    const auto run = observe("photos");
    m_clock->runUntilIdle();
    EXPECT_EQ(m_http.count(), 5) << "the first prefix was known";
    EXPECT_TRUE(suggest(QStringLiteral("phot")).hasValue());
    EXPECT_EQ(m_http.count(), 5);
}

TEST_F(AutocompleteSuggestTest, RequestsStayASecondApartHoweverManyAsk)
{
    const auto run = observe("photos");
    const auto first = suggest(QStringLiteral("film"));
    const auto second = suggest(QStringLiteral("grain"));
    m_clock->runUntilIdle();
    ASSERT_EQ(m_http.count(), 7);
    for (size_t i = 1; i < 7; ++i)
        EXPECT_GE((m_http.sent()[i].at - m_http.sent()[i - 1].at).count(), 1 - 1e-5);
}

TEST_F(AutocompleteSuggestTest, EachRequestOfARunWaitsForAtMostOneThatWasTyped)
{
    const auto run = observe("photos");
    std::vector<Outcome<Terms>> asked;
    for (int i = 0; i < 40; ++i)
        asked.push_back(suggest(QStringLiteral("film %1").arg(i)));
    for (int second = 0; second < 10; ++second)
        m_clock->advance(Seconds(1));
    EXPECT_TRUE(run.isDone()) << "five requests, and no more than one typed between two of them";
    m_clock->runUntilIdle();
    const QStringList sent = typed();
    EXPECT_EQ(sent.size(), 45);
    const qsizetype last = sent.indexOf(QStringLiteral("photos"));
    EXPECT_GE(last, 7) << "and typing had its turns meanwhile";
    EXPECT_LE(last, 9);
    EXPECT_TRUE(std::all_of(asked.begin(), asked.end(),
                            [](const auto &outcome) { return outcome.hasValue(); }));
}

TEST_F(AutocompleteSuggestTest, ATypedRequestWithoutAnAnswerHoldsNoRunUp)
{
    m_http.hold();
    const auto typing = suggest(QStringLiteral("film"));
    const auto run = observe("photos");
    m_clock->advance(Seconds(1));
    EXPECT_EQ(m_http.inFlight(), 2);
    EXPECT_FALSE(typing.isDone());
    m_http.release();
    m_clock->runUntilIdle();
    EXPECT_EQ(run.value()->probes.size(), 5);
}

TEST_F(AutocompleteSuggestTest, WhatIsStoppedWhileItWaitsCostsNoRequest)
{
    suggest(QStringLiteral("ph"));
    for (int key = 0; key < 40; ++key) {
        std::stop_source stop;
        const auto outcome = suggest(QStringLiteral("film %1").arg(key), stop.get_token());
        stop.request_stop();
        EXPECT_TRUE(outcome.isCancelled());
    }
    EXPECT_EQ(m_http.count(), 1);
    const auto last = suggest(QStringLiteral("grain"));
    m_clock->advance(Seconds(1));
    EXPECT_TRUE(last.isDone()) << "nor does it keep others waiting";
}

TEST_F(AutocompleteSuggestTest, AfterTheRequestsOfTheDayKnownTermsThatBeginWithItAreLeft)
{
    m_http.answerWith(hints({QStringLiteral("Film grain"), QStringLiteral("photos")}));
    for (int i = 0; i < 200; ++i) {
        suggest(QStringLiteral("word %1").arg(i));
        m_clock->runUntilIdle();
    }
    EXPECT_EQ(m_http.count(), 200);
    EXPECT_EQ(suggest(QStringLiteral("film")).value(), QStringList{QStringLiteral("Film grain")});
    EXPECT_EQ(suggest(QStringLiteral("sepia")).value(), std::nullopt);
    EXPECT_EQ(m_http.count(), 200) << "typing counts with the rest of the day";
    m_clock->advance(Seconds(86'400));
    EXPECT_TRUE(suggest(QStringLiteral("sepia")).hasValue());
}

TEST_F(AutocompleteSuggestTest, WhereNothingCanBeAskedThereIsNoAnswer)
{
    EXPECT_EQ(Outcome(m_client->suggest(QStringLiteral("film"), QStringLiteral("XX"), {})).value(),
              std::nullopt);
    EXPECT_EQ(suggest(QStringLiteral("  ")).value(), std::nullopt);
    EXPECT_EQ(m_http.count(), 0);
    m_http.answerWith(FakeHttp::response(429));
    EXPECT_EQ(suggest(QStringLiteral("film")).value(), std::nullopt);
    EXPECT_EQ(observe("photos").value(), std::nullopt) << "a refusal is one for both";
    EXPECT_EQ(m_http.count(), 1);
}

TEST_F(AutocompleteSuggestTest, ItEndsWithTheClient)
{
    m_http.hold();
    const auto outcome = suggest(QStringLiteral("film"));
    m_client.reset();
    EXPECT_TRUE(outcome.isCancelled());
    EXPECT_EQ(m_http.inFlight(), 0);
}

} // namespace
} // namespace veltrix
