// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/autocomplete_popularity_provider.h"

#include "clients/autocomplete_client.h"
#include "support/fake_http.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// Assesses at once, or fails.
class FixedProvider final : public PopularityProviding
{
public:
    [[nodiscard]] QString modelVersion() const override { return QStringLiteral("fixed-1"); }
    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey> survey, QString,
                                      std::stop_token) override
    {
        ++asked;
        if (fails)
            throw TransportError(QStringLiteral("no popularity"));
        PopularityAssessment assessment;
        assessment.measurement.emplace().score = 42;
        assessment.message = survey->keyword();
        co_return assessment;
    }
    int asked = 0;
    bool fails = false;
};

std::shared_ptr<const KeywordSurvey> surveyOf(const char *keyword,
                                              std::initializer_list<const char *> names)
{
    QList<ITunesAppResult> results;
    for (const char *name : names)
        results.emplaceBack().trackName = QString::fromUtf8(name);
    return std::make_shared<KeywordSurvey>(QString::fromUtf8(keyword), results);
}

class AutocompletePopularityProviderTest : public testing::Test
{
protected:
    AutocompletePopularityProviderTest()
    {
        m_http.answerWith(FakeHttp::response(
            200, "<plist><dict><key>hints</key><array><dict><key>term</key><string>bear</string>"
                 "</dict></array></dict></plist>"));
    }
    Outcome<PopularityAssessment> assess(const char *keyword = "bear", std::stop_token stop = {})
    {
        return Outcome(m_provider.assess(surveyOf(keyword, {"Bear - Markdown Notes"}),
                                         QStringLiteral("US"), std::move(stop)));
    }

    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>();
    FakeHttp m_http{m_clock};
    std::shared_ptr<FixedProvider> m_inner = std::make_shared<FixedProvider>();
    AutocompletePopularityProvider m_provider{
        m_inner, std::make_shared<AutocompleteClient>(
                     AutocompleteClient::Arguments{m_http.sender(), m_clock, QString()})};
};

TEST_F(AutocompletePopularityProviderTest, AddsEvidenceAndLeavesTheMeasurementAsItIs)
{
    const auto outcome = assess();
    m_clock->runUntilIdle();
    const PopularityAssessment &assessment = outcome.value();
    EXPECT_EQ(assessment.measurement->score, 42);
    EXPECT_EQ(assessment.message, QStringLiteral("bear"));
    ASSERT_TRUE(assessment.evidence);
    EXPECT_EQ(assessment.evidence->probes.size(), 3);
    EXPECT_EQ(assessment.evidence->dailyScore, 100);
    EXPECT_TRUE(assessment.evidence->possibleBrand);
    EXPECT_EQ(m_provider.modelVersion(), QStringLiteral("fixed-1"));
}

TEST_F(AutocompletePopularityProviderTest, AskingComesAfterTheEstimateAndNotAtAllWhenThatFails)
{
    m_inner->fails = true;
    const auto outcome = assess();
    EXPECT_EQ(outcome.failureText(), QStringLiteral("no popularity"));
    EXPECT_EQ(m_http.count(), 0);
}

TEST_F(AutocompletePopularityProviderTest, AFailureOfTheServiceFailsAndDelaysNothing)
{
    m_http.answerWith([](const HttpRequest &) -> HttpResponse {
        throw TransportError(QStringLiteral("The network is not available."));
    });
    const Date before = m_clock->now();
    EXPECT_EQ(assess().value().evidence, std::nullopt);
    EXPECT_EQ(assess().isDone(), false) << "the spacing of the requests still holds";
    m_clock->runUntilIdle();
    EXPECT_LE(m_clock->now() - before, Seconds(1.001));
    m_http.answerWith(FakeHttp::response(429));
    m_clock->advance(Seconds(2));
    EXPECT_EQ(assess().value().evidence, std::nullopt);
    // Blocked: the next measurement is not held up at all.
    EXPECT_EQ(assess("other").value().evidence, std::nullopt);
    EXPECT_EQ(assess("other").value().measurement->score, 42);
}

TEST_F(AutocompletePopularityProviderTest, AStopCancelsAtOnce)
{
    std::stop_source stop;
    const auto outcome = assess("bears", stop.get_token());
    EXPECT_FALSE(outcome.isDone());
    stop.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
    EXPECT_EQ(m_clock->sleepers(), 0);
}

TEST_F(AutocompletePopularityProviderTest, AnAssessmentEndsWithTheProvider)
{
    auto provider = std::make_unique<AutocompletePopularityProvider>(
        m_inner, std::make_shared<AutocompleteClient>(
                     AutocompleteClient::Arguments{m_http.sender(), m_clock, QString()}));
    const Outcome outcome(provider->assess(surveyOf("bear", {}), QStringLiteral("US"), {}));
    EXPECT_FALSE(outcome.isDone());
    provider.reset();
    EXPECT_TRUE(outcome.isCancelled());
    EXPECT_EQ(m_clock->sleepers(), 0);
}

TEST(PossibleBrand, IsAKeywordThatIsTheFirstSegmentOfAName)
{
    const auto isBrand = [](const char *keyword, const char *name) {
        return isPossibleBrand(*surveyOf(keyword, {"Other", name}));
    };
    EXPECT_TRUE(isBrand("photo editor", "Photo Editor: Collage & Filters"));
    EXPECT_TRUE(isBrand("bear", "Bear"));
    EXPECT_TRUE(isBrand("Stock", "Stocks | Quotes")) << "plurals are mapped";
    EXPECT_TRUE(isBrand("bear", ": Bear - Notes")) << "an empty segment is none";
    EXPECT_FALSE(isBrand("collage", "Photo Editor: Collage"));
    EXPECT_FALSE(isBrand("photo", "Photo Editor: Collage"));
    EXPECT_FALSE(isBrand("editor photo", "Photo Editor"));
    EXPECT_FALSE(isBrand("photo editor", "Photo: Editor"));
    EXPECT_FALSE(isBrand("", ""));
    EXPECT_FALSE(isBrand("!", "!"));
    EXPECT_FALSE(isPossibleBrand({u"x", {ITunesAppResult()}}));
}

} // namespace
} // namespace veltrix
