// SPDX-License-Identifier: GPL-3.0-or-later
// An answer that breaks the contract in any one way is seen to.
#include "research_contract.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

namespace veltrix::sample
{
namespace
{

class ContractComparison : public testing::Test
{
protected:
    static ContractCase caseOf(const char *expect)
    {
        return {u"a case"_qs, {}, {}, QJsonDocument::fromJson(expect).object()};
    }
    /// The number of lines of what is different.
    static int differences(const char *expect, const httplib::Response &answer)
    {
        const Contract contract{{}, {}, {u"trackId"_qs, u"trackName"_qs}, {}};
        const QString text = contract.differences(caseOf(expect), answer);
        return text.isEmpty() ? 0 : int(text.count(u'\n')) + 1;
    }

    static httplib::Response answer(int status, const std::string &body,
                                    const httplib::Headers &headers = {})
    {
        httplib::Response response;
        response.status = status;
        response.headers = headers;
        response.set_header("Content-Type", "application/json");
        response.body = body;
        return response;
    }
};

constexpr const char *pending =
    R"({"status":202,"retryAfter":11,"body":{"status":"pending","retryAfter":"$RETRY_AFTER"}})";
const std::string pendingBody = R"({"status":"pending","retryAfter":11})";
const httplib::Headers eleven{{"Retry-After", "11"}};

TEST_F(ContractComparison, TheExpectedAnswerHasNoDifferences)
{
    EXPECT_EQ(differences(pending, answer(202, pendingBody, eleven)), 0);
    httplib::Response charset = answer(202, pendingBody, eleven);
    charset.headers.erase("Content-Type");
    charset.set_header("Content-Type", "application/json; charset=utf-8");
    EXPECT_EQ(differences(pending, charset), 0);
}

TEST_F(ContractComparison, SeesAnotherStatusTypeOrHeader)
{
    EXPECT_EQ(differences(pending, answer(200, pendingBody, eleven)), 1);
    httplib::Response html = answer(202, pendingBody, eleven);
    html.headers.erase("Content-Type");
    EXPECT_EQ(differences(pending, html), 1);
    html.set_header("Content-Type", "text/html");
    EXPECT_EQ(differences(pending, html), 1);
    const char *refused = R"({"status":405,"headers":{"Allow":"POST"},"body":"$ERROR"})";
    const std::string error = R"({"code":"X","message":"no"})";
    EXPECT_EQ(differences(refused, answer(405, error, {{"Allow", "POST"}})), 0);
    EXPECT_EQ(differences(refused, answer(405, error)), 1);
    EXPECT_EQ(differences(refused, answer(405, error, {{"Allow", "POST, PUT"}})), 1);
    EXPECT_EQ(differences(refused, answer(405, error, {{"Allow", "POST"}, {"Allow", "POST"}})), 1);
}

TEST_F(ContractComparison, SeesAnotherWait)
{
    // The number in the body must be that of the header, too.
    EXPECT_EQ(differences(pending, answer(202, pendingBody)), 2);
    EXPECT_EQ(differences(pending, answer(202, pendingBody, {{"Retry-After", "12"}})), 2);
    EXPECT_EQ(differences(pending, answer(202, pendingBody, {{"Retry-After", "11.0"}})), 2);
    EXPECT_EQ(
        differences(pending, answer(202, R"({"status":"pending","retryAfter":"11"})", eleven)), 1);
    EXPECT_EQ(
        differences(pending, answer(202, R"({"status":"pending","retryAfter":11.5})", eleven)), 1);
    const char *range = R"({"status":200,"retryAfter":{"from":120,"to":125},"body":{}})";
    for (const auto &[wait, expected] : {std::pair("119", 1), {"120", 0}, {"125", 0}, {"126", 1}})
        EXPECT_EQ(differences(range, answer(200, "{}", {{"Retry-After", wait}})), expected) << wait;
    const char *none = R"({"status":200,"body":{}})";
    EXPECT_EQ(differences(none, answer(200, "{}", eleven)), 1);
}

TEST_F(ContractComparison, SeesMembersThatAreTooManyMissingOrOther)
{
    EXPECT_EQ(differences(pending, answer(202, R"({"retryAfter":11})", eleven)), 1);
    EXPECT_EQ(differences(pending, answer(202, R"({"status":"stale","retryAfter":11})", eleven)),
              1);
    EXPECT_EQ(differences(pending,
                          answer(202, R"({"status":"pending","retryAfter":11,"place":3})", eleven)),
              1);
    for (const char *body : {"", "[]", "null", "<html>", R"({"status":"pending")"})
        EXPECT_EQ(differences(pending, answer(202, body, eleven)), 1) << body;
}

TEST_F(ContractComparison, SeesResultsAndMomentsOfAnotherForm)
{
    const char *ready = R"({"status":200,"body":{"fetchedAt":"$MOMENT","results":"$RESULTS"}})";
    const auto differencesOf = [&](const std::string &moment, const std::string &results) {
        return differences(
            ready, answer(200, R"({"fetchedAt":")" + moment + R"(","results":)" + results + "}"));
    };
    const std::string moment = "2026-03-01T08:30:00.250Z";
    const std::string one = R"([{"trackId":1,"trackName":"x"}])";
    EXPECT_EQ(differencesOf(moment, one), 0);
    for (const char *other : {"2026-03-01T08:30:00Z", "2026-03-01T08:30:00.25Z",
                              "2026-03-01T08:30:00.250+00:00", "2026-03-01 08:30:00.250Z", ""})
        EXPECT_EQ(differencesOf(other, one), 1) << other;
    std::string many = "[{\"trackId\":0}";
    for (int i = 1; i <= 100; ++i)
        many += ",{\"trackId\":" + std::to_string(i) + "}";
    for (const std::string &other :
         {std::string("[]"), std::string("null"), std::string("[1]"), many + "]",
          std::string(R"([{"trackName":"x"}])"), std::string(R"([{"trackId":1,"price":2}])")})
        EXPECT_EQ(differencesOf(moment, other), 1) << other;
}

TEST_F(ContractComparison, SeesErrorsOfAnotherForm)
{
    const char *refused = R"({"status":400,"body":"$ERROR"})";
    EXPECT_EQ(differences(refused, answer(400, R"({"code":400,"message":"no"})")), 0);
    for (const char *body :
         {R"({"code":400})", R"({"message":"no"})", R"({"code":null,"message":"no"})",
          R"({"code":400,"message":""})", R"({"code":400,"message":"no","hint":""})"})
        EXPECT_EQ(differences(refused, answer(400, body)), 1) << body;
}

TEST_F(ContractComparison, RefusesToPassOverWhatItDoesNotKnow)
{
    const QTemporaryDir folder;
    const auto reads = [&](const char *member, const char *inCase) {
        const QString name = folder.filePath(u"cases.json"_qs);
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(R"({"version":1,)") + member +
                   R"("path":"/","headers":{},"fields":[],"cases":[{"name":"x",)" + inCase + "}]}");
        file.close();
        try {
            return Contract::read(name).cases.size() == 1;
        } catch (const std::runtime_error &) {
            return false;
        }
    };
    const char *known = R"("given":{},"request":{},"expect":{"status":200,"body":{}})";
    EXPECT_TRUE(reads("", known));
    EXPECT_FALSE(reads(R"("later":1,)", known));
    for (const char *unknown :
         {R"("given":{"hour":3},"request":{},"expect":{"status":200,"body":{}})",
          R"("given":{},"request":{"times":2},"expect":{"status":200,"body":{}})",
          R"("given":{},"request":{},"expect":{"status":200,"body":{},"within":3})",
          R"("given":{},"request":{},"expect":{"status":200,"body":{"a":"$WORD"}})",
          R"("given":{},"request":{},"expect":{"status":200,"body":"$ANYTHING"})",
          R"("given":{},"request":{},"expect":{"status":200})"})
        EXPECT_FALSE(reads("", unknown)) << unknown;
    EXPECT_THROW(Contract::read(folder.filePath(u"none.json"_qs)), std::runtime_error);
}

} // namespace
} // namespace veltrix::sample
