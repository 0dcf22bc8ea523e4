// SPDX-License-Identifier: GPL-3.0-or-later
// The research function over real HTTPS on loopback.
#include "sample/research_question.h"
#include "services_fixture.h"

#include <QRegularExpression>

#include <gmock/gmock.h>

namespace veltrix::sample
{
namespace
{

using testing::HasSubstr;

class ResearchServiceTest : public ServicesTest
{
protected:
    static httplib::Response ask(const std::string &keyword, const char *key = publishableKey)
    {
        return post(R"({"keyword":")" + keyword + R"(","country":"US"})", key);
    }

    static httplib::Response post(const std::string &body, const char *key = publishableKey)
    {
        SecureClient client(services());
        httplib::Headers headers;
        if (key)
            headers.emplace("apikey", key);
        const auto result = client->Post(researchPath, headers, body, "application/json");
        if (!result) {
            ADD_FAILURE() << "no answer: " << httplib::to_string(result.error());
            return {};
        }
        return *result;
    }
};

TEST_F(ResearchServiceTest, AnswersWithRankedResultsAndTheirTime)
{
    const auto answer = ask("photo editor");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.get_header_value("Content-Type"), "application/json");
    const QJsonObject envelope = jsonOf(answer.body);
    EXPECT_EQ(envelope.value(QLatin1String("status")).toString(), u"ready");
    static const QRegularExpression form(
        QStringLiteral(R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z$)"));
    EXPECT_TRUE(form.match(envelope.value(QLatin1String("fetchedAt")).toString()).hasMatch());
    EXPECT_EQ(envelope.value(QLatin1String("results")).toArray().size(), 100);
}

TEST_F(ResearchServiceTest, RanksLikeTheSearch)
{
    const QJsonArray researched = resultsOf(ask("collage maker").body);
    auto client = httpClient();
    const auto searched = client.Get("/search?term=collage%20maker&country=US&limit=100");
    const QJsonArray expected = resultsOf(searched->body);
    ASSERT_EQ(researched.size(), expected.size());
    for (qsizetype index = 0; index < expected.size(); ++index)
        EXPECT_EQ(researched[index][QLatin1String("trackId")],
                  expected[index][QLatin1String("trackId")]);
}

TEST_F(ResearchServiceTest, TakesPicturesFromTheHttpServices)
{
    const QJsonValue icon = resultsOf(ask("recipes").body)[0][QLatin1String("artworkUrl100")];
    EXPECT_TRUE(icon.toString().startsWith(services().httpOrigin()));
}

TEST_F(ResearchServiceTest, RefusesOtherKeys)
{
    for (const char *key : {static_cast<const char *>(nullptr), "", "sb_publishable_other"}) {
        const auto answer = ask("photo editor", key);
        EXPECT_EQ(answer.status, 401);
        EXPECT_EQ(answer.body, R"({"code":401,"message":"Invalid API key"})");
    }
}

TEST_F(ResearchServiceTest, RefusesQuestionsWithoutKeywordOrCountry)
{
    for (const char *body : {"", "[]", R"({"keyword":"a"})", R"({"country":"US"})"})
        EXPECT_EQ(post(body).status, 400) << body;
}

TEST_F(ResearchServiceTest, IsPendingFirstAndReadyNextByCommand)
{
    const auto first = ask("sample:pending collage maker");
    EXPECT_EQ(first.status, 202);
    EXPECT_EQ(first.get_header_value("Retry-After"), "1");
    EXPECT_EQ(first.body, R"({"status":"pending","retryAfter":1})");
    const auto next = ask("sample:pending collage maker");
    EXPECT_EQ(next.status, 200);
    EXPECT_EQ(resultsOf(next.body).size(), 100);
}

TEST_F(ResearchServiceTest, LimitsByCommand)
{
    const auto limited = ask("sample:limited");
    EXPECT_EQ(limited.status, 429);
    EXPECT_EQ(limited.get_header_value("Retry-After"), "60");
    EXPECT_EQ(limited.body, R"({"status":"unavailable","retryAfter":60})");
    const auto unavailable = ask("sample:unavailable");
    EXPECT_EQ(unavailable.status, 503);
    EXPECT_EQ(unavailable.get_header_value("Retry-After"), "10");
    EXPECT_EQ(unavailable.body, R"({"status":"unavailable","retryAfter":10})");
}

TEST_F(ResearchServiceTest, IsNotReadyByCommand)
{
    const auto failed = ask("sample:failed");
    EXPECT_EQ(failed.status, 200);
    EXPECT_EQ(failed.get_header_value("Retry-After"), "600");
    EXPECT_EQ(failed.body, R"({"status":"failed","retryAfter":600})");
    const auto stale = ask("sample:stale");
    EXPECT_EQ(stale.status, 200);
    EXPECT_EQ(stale.get_header_value("Retry-After"), "90");
    const QJsonObject envelope = jsonOf(stale.body);
    EXPECT_EQ(envelope.keys(), QStringList({u"fetchedAt"_qs, u"retryAfter"_qs, u"status"_qs}));
    EXPECT_LT(envelope.value(u"fetchedAt").toString().left(10),
              QDateTime::currentDateTimeUtc().toString(Qt::ISODate).left(10));
}

TEST_F(ResearchServiceTest, AnswersInEveryStorefrontThatHasAnAppStore)
{
    // The made-up store is not sold in Zimbabwe.
    const auto answer = post(R"({"keyword":"photo editor","country":"ZW"})");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(jsonOf(answer.body).value(u"results"), QJsonArray());
    for (const char *country : {"EA", "E ", " A", "U", "USA", ""})
        EXPECT_EQ(post(std::string(R"({"keyword":"a","country":")") + country + "\"}").status, 400)
            << country;
}

TEST_F(ResearchServiceTest, FailsLikeThePlatformByCommand)
{
    const std::pair<const char *, int> failures[] = {
        {"error", 500}, {"boot", 503}, {"idle", 504}, {"worker", 546}, {"missing", 404}};
    for (const auto &[command, status] : failures) {
        const auto answer = ask(std::string("sample:") + command);
        EXPECT_EQ(answer.status, status) << command;
        const QJsonObject error = jsonOf(answer.body);
        EXPECT_TRUE(error.contains(QLatin1String("code"))) << command;
        EXPECT_TRUE(error.value(QLatin1String("message")).isString()) << command;
    }
    EXPECT_THAT(ask("sample:boot").body, HasSubstr(R"("code":"BOOT_ERROR")"));
    EXPECT_THAT(ask("sample:garbage").body, HasSubstr("<!DOCTYPE html>"));
}

TEST(ResearchServicePending, MakesEveryKeywordWaitOnceWhenAskedTo)
{
    Options options = testOptions();
    options.researchPending = true;
    const SampleServices services(options);
    SecureClient client(services);
    const httplib::Headers headers{{"apikey", publishableKey}};
    const auto ask = [&](const char *country) {
        const auto answer = client->Post(
            researchPath, headers,
            std::string(R"({"keyword":"notes","country":")") + country + "\"}", "application/json");
        return std::to_string(answer->status) + ' ' + answer->get_header_value("Retry-After");
    };
    EXPECT_EQ(ask("US"), "202 2");
    EXPECT_EQ(ask("DE"), "202 2") << "another storefront is another question";
    EXPECT_EQ(ask("US"), "200 ");
}

TEST_F(ResearchServiceTest, IsTrustedOnlyThroughItsAuthority)
{
    httplib::Client stranger(services().httpsOrigin().toStdString());
    stranger.enable_server_certificate_verification(true);
    const auto result = stranger.Get(feedPath);
    EXPECT_EQ(result.error(), httplib::Error::SSLServerVerification);

    const SampleServices other(testOptions());
    SecureClient wrongAuthority(other);
    EXPECT_TRUE(wrongAuthority->Get(feedPath));
    EXPECT_NE(other.authorityPem(), services().authorityPem());
}

} // namespace
} // namespace veltrix::sample
