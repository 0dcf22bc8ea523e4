// SPDX-License-Identifier: GPL-3.0-or-later
// Bodies in the form of the real service.
#include "json/json_reader.h"
#include "model/itunes_app_result.h"
#include "sample/app_store.h"
#include "sample/description.h"
#include "sample/fixtures.h"
#include "sample/itunes_body.h"
#include "sample/json_text.h"
#include "sample_printers.h"

#include <QDir>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <map>
#include <set>

namespace veltrix::sample
{
namespace
{

const AppStore &testStore()
{
    static const AppStore store(&testDay);
    return store;
}

/// Every app that the storefront sells, one record each.
Records allRecords(const char *country)
{
    QList<qint64> ids;
    for (const SampleApp &app : testStore().catalog().apps())
        ids += app.trackId;
    return testStore().lookUp(ids, storefront(country), QStringLiteral("http://127.0.0.1:1"));
}

QByteArray valueOf(const std::vector<RecordField> &record, const QByteArray &key)
{
    const auto found = std::ranges::find(record, key, &RecordField::key);
    return found == record.end() ? QByteArray() : found->value;
}

int countWithout(const Records &records, const QByteArray &key)
{
    return static_cast<int>(std::ranges::count_if(
        records, [&key](const auto &record) { return valueOf(record, key).isNull(); }));
}

TEST(ItunesBody, HasFortyTwoBytesWithoutResults)
{
    EXPECT_EQ(itunesBody({}), "\n\n\n{\n \"resultCount\":0,\n \"results\": []\n}\n\n\n");
    EXPECT_EQ(itunesBody({}).size(), 42);
}

TEST(ItunesBody, LaysRecordsOutLikeTheRealService)
{
    const Records records{{{"trackId", "1"}, {"artworkUrl60", "\"a\""}, {"screenshotUrls", "[]"}},
                          {{"description", "\"b\""}, {"trackId", "2"}}};
    EXPECT_EQ(itunesBody(records),
              "\n\n\n{\n \"resultCount\":2,\n \"results\": [\n"
              "{\"trackId\":1, \n\"artworkUrl60\":\"a\", \"screenshotUrls\":[]}, \n"
              "{\"description\":\"b\", \"trackId\":2}]\n}\n\n\n");
}

TEST(ItunesBody, IsJsonWithAsManyResultsAsItSays)
{
    for (const char *country : {"US", "DE", "JP", "TH", "SA", "RU", "KR", "BR"}) {
        const Records records = allRecords(country);
        const std::string body = itunesBody(records).toStdString();
        EXPECT_EQ(jsonOf(body).value(QLatin1String("resultCount")).toInt(),
                  static_cast<int>(records.size()));
        EXPECT_EQ(resultsOf(body).size(), static_cast<qsizetype>(records.size()));
    }
}

TEST(ItunesBody, IsReadByVeltrix)
{
    const auto read = fromJson<ITunesSearchResponse>(itunesBody(allRecords("US")));
    ASSERT_GT(read.results.size(), 300);
    const auto lumen = std::ranges::find(read.results, lumenPhotoEditorId,
                                         [](const ITunesAppResult &app) { return app.trackId; });
    ASSERT_NE(lumen, read.results.end());
    EXPECT_EQ(lumen->trackName, u"Lumen Photo Editor"_qs);
    EXPECT_EQ(lumen->averageUserRating, 4.57218);
    EXPECT_EQ(lumen->releaseDate, u"2019-10-22T07:00:00Z"_qs);
    EXPECT_EQ(lumen->formattedPrice, u"Free"_qs);
}

TEST(AppRecord, NeverHasASubtitle)
{
    for (const auto &record : allRecords("US"))
        EXPECT_TRUE(valueOf(record, "subtitle").isNull());
}

TEST(AppRecord, NamesEachFieldOnce)
{
    for (const auto &record : allRecords("US")) {
        std::set<QByteArray> keys;
        for (const RecordField &field : record)
            EXPECT_TRUE(keys.insert(field.key).second) << field.key.toStdString();
    }
}

TEST(AppRecord, OrdersFieldsDifferentlyFromAppToApp)
{
    std::set<QByteArrayList> orders;
    for (const auto &record : allRecords("US")) {
        QByteArrayList keys;
        for (const RecordField &field : record)
            keys += field.key;
        orders.insert(keys);
    }
    EXPECT_GT(orders.size(), 100U);
}

TEST(AppRecord, LacksFieldsInSomeApps)
{
    const Records records = allRecords("US");
    for (const char *key : {"userRatingCount", "averageUserRating", "formattedPrice", "sellerUrl",
                            "releaseNotes", "currentVersionReleaseDate"}) {
        EXPECT_GT(countWithout(records, key), 0) << key;
        EXPECT_LT(countWithout(records, key), 110) << key;
    }
    for (const char *key : {"trackId", "trackName", "artworkUrl60", "artworkUrl100",
                            "artworkUrl512", "releaseDate", "price", "description"})
        EXPECT_EQ(countWithout(records, key), 0) << key;
}

TEST(AppRecord, SaysZeroForSomeUnratedAppsAndNothingForOthers)
{
    const Records records = allRecords("US");
    const auto zeros = std::ranges::count_if(records, [](const auto &record) {
        return valueOf(record, "userRatingCount") == "0" &&
               valueOf(record, "averageUserRating") == "0";
    });
    EXPECT_GT(zeros, 3);
    EXPECT_GT(countWithout(records, "userRatingCount"), 3);
}

TEST(AppRecord, HasNoScreenshotsForMostApps)
{
    const Records records = allRecords("US");
    const auto empty = std::ranges::count_if(
        records, [](const auto &record) { return valueOf(record, "screenshotUrls") == "[]"; });
    EXPECT_GT(empty, static_cast<std::ptrdiff_t>(records.size() * 6 / 10));
    EXPECT_LT(empty, static_cast<std::ptrdiff_t>(records.size() * 9 / 10));
}

TEST(AppRecord, PrintsEveryDigitOfStars)
{
    const Records records =
        testStore().lookUp({lumenPhotoEditorId}, storefront("US"), QStringLiteral("http://x"));
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(valueOf(records[0], "averageUserRating"),
              "4.57218000000000035498715078574605286121368408203125");
}

TEST(AppRecord, PointsPicturesAndPagesAtTheServer)
{
    const QString origin = QStringLiteral("http://127.0.0.1:4711");
    const Records records = testStore().lookUp({lumenPhotoEditorId}, storefront("US"), origin);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(valueOf(records[0], "artworkUrl100"),
              "\"http://127.0.0.1:4711/artwork/1482203417/100.png\"");
    EXPECT_EQ(valueOf(records[0], "trackViewUrl"),
              "\"http://127.0.0.1:4711/us/app/lumen-photo-editor/id1482203417?uo=4\"");
}

TEST(AppRecord, WritesCategoriesInTheLanguageOfTheStorefront)
{
    const auto genreIn = [](const char *country) {
        return valueOf(testStore().lookUp({lumenPhotoEditorId}, storefront(country), {}).at(0),
                       "primaryGenreName");
    };
    EXPECT_EQ(genreIn("US"), "\"Photo & Video\"");
    EXPECT_EQ(genreIn("KR"), "\"사진 및 비디오\"");
}

TEST(AppRecord, HasDatesInTheFormOfTheService)
{
    static const QRegularExpression form(QStringLiteral(R"(^"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ"$)"));
    for (const auto &record : allRecords("US")) {
        const QString released = QString::fromUtf8(valueOf(record, "releaseDate"));
        EXPECT_TRUE(form.match(released).hasMatch()) << released.toStdString();
    }
}

TEST(AppRecord, SendsOnlyFieldsThatTheRealServiceSends)
{
    const QString folder = qEnvironmentVariable("VELTRIX_RECORDED_BODIES");
    if (folder.isEmpty())
        GTEST_SKIP() << "VELTRIX_RECORDED_BODIES names no folder of recorded bodies";
    std::set<QString> sent;
    for (const QFileInfo &info : QDir(folder).entryInfoList({QStringLiteral("search_*.json")})) {
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        for (const QJsonValue &item : resultsOf(file.readAll().toStdString()))
            for (const QString &key : item.toObject().keys())
                sent.insert(key);
    }
    ASSERT_FALSE(sent.empty());
    for (const auto &record : allRecords("US"))
        for (const RecordField &field : record)
            EXPECT_TRUE(sent.contains(QString::fromUtf8(field.key))) << field.key.toStdString();
}

TEST(Description, IsAsLongAsTheStoreTakesAndNeverLonger)
{
    qsizetype longest = 0;
    qsizetype shortest = longestDescription;
    for (const SampleApp &app : testCatalog().apps())
        for (int index = 0; index < languageCount; ++index) {
            const qsizetype length = descriptionOf(app, static_cast<Language>(index)).size();
            longest = std::max(longest, length);
            shortest = std::min(shortest, length);
        }
    EXPECT_EQ(longest, longestDescription);
    EXPECT_LT(shortest, 400);
}

TEST(Description, IsValidTextWithoutPlaceholders)
{
    for (const SampleApp &app : testCatalog().apps())
        for (int index = 0; index < languageCount; ++index) {
            const QString text = descriptionOf(app, static_cast<Language>(index));
            EXPECT_TRUE(text.isValidUtf16());
            EXPECT_FALSE(text.contains(QLatin1String("%1")) || text.contains(QLatin1String("%2")));
        }
}

TEST(Description, HasTheOddCharactersOfRealOnes)
{
    const QByteArray body = itunesBody(allRecords("US"));
    for (const char *odd : {R"(\u2028)", R"(\t)", R"(\")", R"(\b)", R"(\n)", "🎉", "”"})
        EXPECT_TRUE(body.contains(odd)) << odd;
    EXPECT_FALSE(body.contains("\u2028"));
    EXPECT_FALSE(body.contains('\t'));
}

TEST(JsonText, EscapesWhatMustNotStandInAString)
{
    EXPECT_EQ(jsonString(u"a\"b\\c/d"), R"("a\"b\\c/d")");
    EXPECT_EQ(jsonString(u"\u2028\u2029\u0001\b\f\n\r\t"), R"("\u2028\u2029\u0001\b\f\n\r\t")");
    EXPECT_EQ(jsonString(u"写真 🎉"), "\"写真 🎉\"");
    EXPECT_EQ(jsonStrings({u"a"_qs, u"b"_qs}), R"(["a", "b"])");
    EXPECT_EQ(jsonStrings({}), "[]");
}

TEST(JsonText, PrintsNumbersExactly)
{
    EXPECT_EQ(jsonExactNumber(0), "0");
    EXPECT_EQ(jsonExactNumber(5), "5");
    EXPECT_EQ(jsonExactNumber(4.5), "4.5");
    EXPECT_EQ(jsonExactNumber(4.628), "4.6280000000000001136868377216160297393798828125");
    EXPECT_EQ(jsonAmount(0), "0.00");
    EXPECT_EQ(jsonAmount(4.99), "4.99");
}

} // namespace
} // namespace veltrix::sample
