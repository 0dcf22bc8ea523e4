// SPDX-License-Identifier: GPL-3.0-or-later
// Search, look-up, pictures and faults over real HTTP on loopback.
#include "sample/fixtures.h"
#include "sample/market.h"
#include "services_fixture.h"

#include <QImage>

#include <gmock/gmock.h>

#include <chrono>
#include <fstream>
#include <sstream>

namespace veltrix::sample
{
namespace
{

using testing::HasSubstr;

class ItunesServiceTest : public ServicesTest
{
protected:
    /// The answer to a GET; fails the test if there is none.
    static httplib::Response get(const std::string &target, const httplib::Headers &headers = {})
    {
        auto client = httpClient();
        client.set_decompress(false);
        const httplib::Result result = client.Get(target, headers);
        if (!result) {
            ADD_FAILURE() << "no answer: " << httplib::to_string(result.error());
            return {};
        }
        return *result;
    }

    static QJsonArray results(const std::string &target) { return resultsOf(get(target).body); }
};

TEST_F(ItunesServiceTest, AnswersWithTheHeadersOfTheRealService)
{
    const auto answer = get("/search?term=photo%20editor&entity=software&country=US&limit=5");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.get_header_value("Content-Type"), "text/javascript; charset=utf-8");
    EXPECT_EQ(answer.get_header_value("Content-Disposition"), "attachment; filename=1.txt");
    EXPECT_THAT(answer.get_header_value("Cache-Control"), testing::StartsWith("max-age=8"));
    EXPECT_EQ(answer.get_header_value("Vary"), "Accept-Encoding");
    EXPECT_FALSE(answer.has_header("Content-Encoding"));
    EXPECT_THAT(answer.body, testing::StartsWith("\n\n\n{\n \"resultCount\":5,\n"));
    EXPECT_THAT(answer.body, testing::EndsWith("}]\n}\n\n\n"));
}

TEST_F(ItunesServiceTest, CompressesForClientsThatAcceptGzip)
{
    const std::string target = "/search?term=photo%20editor&country=US&limit=20";
    const auto packed = get(target, {{"Accept-Encoding", "br, gzip, deflate"}});
    EXPECT_EQ(packed.get_header_value("Content-Encoding"), "gzip");
    auto client = httpClient();
    const auto unpacked = client.Get(target, {{"Accept-Encoding", "gzip"}});
    ASSERT_TRUE(unpacked);
    EXPECT_EQ(unpacked->body, get(target).body);
    EXPECT_LT(packed.body.size(), unpacked->body.size() / 3);
}

TEST_F(ItunesServiceTest, SendsTheEmptyBodyForUnknownWords)
{
    EXPECT_EQ(get("/search?term=xyzzy&entity=software&country=US&limit=100").body,
              "\n\n\n{\n \"resultCount\":0,\n \"results\": []\n}\n\n\n");
}

TEST_F(ItunesServiceTest, KeepsToTheLimitAndCapsItAtTwoHundred)
{
    EXPECT_EQ(results("/search?term=photo&country=US&limit=1").size(), 1);
    EXPECT_EQ(results("/search?term=photo&country=US&limit=25").size(), 25);
    EXPECT_EQ(results("/search?term=photo&country=US").size(), 50);
    EXPECT_LE(results("/search?term=photo&country=US&limit=999").size(), 200);
    EXPECT_GT(results("/search?term=photo&country=US&limit=999").size(), 100);
    EXPECT_EQ(results("/search?term=photo&country=US&limit=0").size(), 1);
}

TEST_F(ItunesServiceTest, ReadsTermsInAnyScriptAndEncoding)
{
    EXPECT_GT(results("/search?term=%E5%AE%B6%E8%A8%88%E7%B0%BF&country=jp").size(), 3);
    EXPECT_EQ(results("/search?term=photo+editor&country=us"),
              results("/search?term=PHOTO%20EDITOR&country=US"));
}

TEST_F(ItunesServiceTest, SearchesOnlyForSoftware)
{
    EXPECT_EQ(results("/search?term=photo&entity=movie&country=US").size(), 0);
}

TEST_F(ItunesServiceTest, FindsNothingWhereItHasNoStorefront)
{
    EXPECT_EQ(results("/search?term=photo&country=XX").size(), 0);
}

TEST_F(ItunesServiceTest, RejectsValuesThatMakeNoSense)
{
    const auto country = get("/search?term=photo&country=USA");
    EXPECT_EQ(country.status, 400);
    EXPECT_THAT(country.body, HasSubstr("Invalid value(s) for key(s): [country]"));
    EXPECT_EQ(get("/search?term=photo&limit=many").status, 400);
}

TEST_F(ItunesServiceTest, LooksAnAppUp)
{
    const QJsonArray found = results("/lookup?id=1482203417&country=US&entity=software");
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].toObject().value(QLatin1String("trackName")).toString(),
              u"Lumen Photo Editor");
}

TEST_F(ItunesServiceTest, LooksUpNumbersBeyond32Bits)
{
    const QJsonArray found = results("/lookup?id=6451880243&country=GB&entity=software");
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].toObject().value(QLatin1String("trackId")).toInteger(), tidewaterJournalId);
}

TEST_F(ItunesServiceTest, LooksSeveralAppsUpInTheirOrder)
{
    EXPECT_EQ(results("/lookup?id=6451880243,1,1482203417&country=US").size(), 2);
}

TEST_F(ItunesServiceTest, LooksNothingUpWithoutCountryOrWhereTheAppIsNotSold)
{
    const Storefront &us = storefront("US");
    const auto &apps = testCatalog().apps();
    const auto foreign = std::ranges::find_if(
        apps, [&us](const SampleApp &app) { return !isSold(app, us, testDay()); });
    ASSERT_NE(foreign, apps.end());
    const std::string id = std::to_string(foreign->trackId);
    const std::string home = foreign->home->country.toStdString();
    EXPECT_EQ(results("/lookup?id=" + id + "&country=" + home).size(), 1);
    const auto absent = get("/lookup?id=" + id + "&country=US&entity=software");
    EXPECT_EQ(absent.status, 200);
    EXPECT_EQ(absent.body.size(), 42U);
    EXPECT_EQ(get("/lookup?id=1482203417&entity=software").body.size(), 42U);
    EXPECT_EQ(get("/lookup?id=42&country=US&entity=software").body.size(), 42U);
}

TEST_F(ItunesServiceTest, ThrottlesByCommandWithAnEmpty403)
{
    const auto answer = get("/search?term=sample%3Athrottled&country=US");
    EXPECT_EQ(answer.status, 403);
    EXPECT_EQ(answer.body, "");
    EXPECT_EQ(answer.get_header_value("Content-Length"), "0");
    EXPECT_FALSE(answer.has_header("Retry-After"));
}

TEST_F(ItunesServiceTest, FailsByCommand)
{
    EXPECT_EQ(get("/search?term=sample:error&country=US").status, 500);
    EXPECT_EQ(get("/search?term=sample:limited&country=US").status, 429);
}

TEST_F(ItunesServiceTest, SendsAPageWhereJsonWasAskedForByCommand)
{
    const auto answer = get("/search?term=sample:garbage&country=US");
    EXPECT_EQ(answer.status, 200);
    EXPECT_THAT(answer.get_header_value("Content-Type"), testing::StartsWith("text/html"));
    EXPECT_THAT(answer.body, testing::StartsWith("<!DOCTYPE html>"));
}

TEST_F(ItunesServiceTest, ClosesHalfWayByCommand)
{
    auto client = httpClient();
    std::size_t announced = 0;
    std::size_t received = 0;
    const auto result = client.Get(
        "/search?term=sample:cut&country=US",
        [&announced](const httplib::Response &response) {
            announced = std::stoul(response.get_header_value("Content-Length"));
            return true;
        },
        [&received](const char *, std::size_t length) {
            received += length;
            return true;
        });
    EXPECT_FALSE(result) << "a cut body must not look whole";
    EXPECT_GT(announced, 10'000U);
    EXPECT_GE(received, announced / 4);
    EXPECT_LE(received, announced / 2);
}

TEST_F(ItunesServiceTest, SendsMoreThanAnybodyShouldReadByCommand)
{
    const auto answer = get("/search?term=sample:huge&country=US");
    EXPECT_GT(answer.body.size(), 40U * 1024 * 1024);
}

TEST_F(ItunesServiceTest, TakesItsTimeByCommandAndThenAnswers)
{
    const auto started = std::chrono::steady_clock::now();
    const QJsonArray slow = results("/search?term=sample:slow%20budget&country=US");
    EXPECT_GE(std::chrono::steady_clock::now() - started, std::chrono::seconds(3));
    EXPECT_EQ(slow, results("/search?term=budget&country=US"));
}

TEST_F(ItunesServiceTest, DrawsIconsInTheSizeAskedFor)
{
    for (const int size : {60, 100, 512}) {
        const auto answer = get("/artwork/1482203417/" + std::to_string(size) + ".png");
        EXPECT_EQ(answer.get_header_value("Content-Type"), "image/png");
        const QImage icon = QImage::fromData(QByteArray::fromStdString(answer.body), "PNG");
        EXPECT_EQ(icon.size(), QSize(size, size));
    }
    EXPECT_EQ(get("/artwork/1482203417/0.png").status, 404);
    EXPECT_EQ(get("/artwork/1482203417/1025.png").status, 404);
    EXPECT_EQ(get("/artwork/99999999999999999999/60.png").status, 404);
    EXPECT_EQ(get("/artwork/42/60.png").status, 404);
}

TEST_F(ItunesServiceTest, ServesEveryPictureThatARecordNames)
{
    const QJsonObject lumen = results("/lookup?id=1482203417&country=US")[0].toObject();
    QStringList addresses;
    for (const char *key : {"artworkUrl60", "artworkUrl100", "artworkUrl512"})
        addresses += lumen.value(QLatin1String(key)).toString();
    for (const char *key : {"screenshotUrls", "ipadScreenshotUrls"}) {
        const QJsonArray list = lumen.value(QLatin1String(key)).toArray();
        EXPECT_GE(list.size(), 3) << key;
        for (const QJsonValue &address : list)
            addresses += address.toString();
    }
    for (const QString &address : addresses) {
        ASSERT_TRUE(address.startsWith(services().httpOrigin())) << address.toStdString();
        const auto answer = get(address.mid(services().httpOrigin().size()).toStdString());
        EXPECT_FALSE(QImage::fromData(QByteArray::fromStdString(answer.body)).isNull())
            << address.toStdString();
    }
}

TEST_F(ItunesServiceTest, ShowsAPageForEveryApp)
{
    const auto answer = get("/us/app/lumen-photo-editor/id1482203417?uo=4");
    EXPECT_EQ(answer.status, 200);
    EXPECT_THAT(answer.body, HasSubstr("<h1>Lumen Photo Editor</h1>"));
    EXPECT_EQ(get("/US/app/id1482203417").status, 200);
    EXPECT_EQ(get("/us/app/id42").status, 404);
}

TEST(ItunesServiceThrottle, RefusesRequestsBeyondTheLimitButServesPictures)
{
    Options options = testOptions();
    options.throttle = 3;
    const SampleServices services(options);
    httplib::Client client(services.httpOrigin().toStdString());
    for (int request = 0; request < 3; ++request)
        EXPECT_EQ(client.Get("/search?term=budget&country=US")->status, 200);
    const auto refused = client.Get("/lookup?id=1482203417&country=US");
    EXPECT_EQ(refused->status, 403);
    EXPECT_EQ(refused->body, "");
    EXPECT_EQ(client.Get("/artwork/1482203417/60.png")->status, 200);
}

TEST(AccessLogTest, HoldsMethodPathAndStatusButNoQuery)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("access.log"));
    Options options = testOptions();
    options.logFile = file;
    {
        const SampleServices services(options);
        httplib::Client client(services.httpOrigin().toStdString());
        // One connection is served by one thread, so its lines keep their order.
        client.set_keep_alive(true);
        ASSERT_TRUE(client.Get("/search?term=sekret&country=US"));
        ASSERT_TRUE(client.Get("/nowhere?sekret=1"));
    }
    std::ostringstream text;
    text << std::ifstream(file.toStdString()).rdbuf();
    EXPECT_EQ(text.str(), "GET /search 200\nGET /nowhere 404\n");
}

TEST(SampleServicesTest, SayThatAPortIsTaken)
{
    const SampleServices first(testOptions());
    Options options = testOptions();
    options.port = first.httpOrigin().section(QLatin1Char(':'), 2).toInt();
    EXPECT_THROW(const SampleServices second(options), std::runtime_error);
}

TEST(SampleServicesTest, StopWithoutWaitingForSlowAnswers)
{
    auto services = std::make_unique<SampleServices>(testOptions());
    const std::string origin = services->httpOrigin().toStdString();
    std::thread slow([&origin] {
        httplib::Client client(origin);
        (void)client.Get("/search?term=sample:slow&country=US");
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    const auto started = std::chrono::steady_clock::now();
    services.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::milliseconds(2'500));
    slow.join();
}

} // namespace
} // namespace veltrix::sample
