// SPDX-License-Identifier: GPL-3.0-or-later
// The records: what may be missing, what must be there, equality, hashing, and reading back what
// was written.
#include "json/json_reader.h"
#include "model/app_profile.h"
#include "model/itunes_app_result.h"
#include "model/keyword_snapshot.h"
#include "model/tracked_competitor.h"
#include "model/tracked_keyword.h"
#include "support/generators.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

const QByteArray profileJson =
    R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","trackId":6451880007,)"
    R"("appName":"Lumen","platform":"iPhone","country":"US"})";

const QByteArray componentsJson =
    R"({"averageReviewsTop10":1,"averageAgeYearsTop10":2,"averageKeywordMatchTop10":0.5,)"
    R"("reviewComponent":0.1,"ageComponent":0.25,"matchComponent":0.5,)"
    R"("reviewsWeight":0.45,"ageWeight":0.25,"matchWeight":0.3})";

/// A snapshot with the keys that every snapshot has, and no others.
QByteArray oldestSnapshotJson()
{
    return R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F",)"
           R"("trackedKeywordId":"00000000-0000-0000-0000-000000000001",)"
           R"("keyword":"photo editor","country":"US","fetchedAt":757382400.5,)"
           R"("difficultyScore":44,"difficultyComponents":)" +
           componentsJson + R"(,"competitorIcons":["https://icons.example/1.png"]})";
}

QByteArray without(QByteArray json, const QByteArray &part)
{
    EXPECT_EQ(json.count(part), 1) << part.constData();
    return json.replace(part, "");
}

template <class T>
QString failureOf(const QByteArray &json)
{
    try {
        fromJson<T>(json);
    } catch (const DecodingError &error) {
        return error.description();
    }
    return QStringLiteral("no failure");
}

TEST(AppProfile, WithoutSortOrderAndIconReadsWithZeroAndNoIcon)
{
    const auto profile = fromJson<AppProfile>(profileJson);
    EXPECT_EQ(profile.sortOrder, 0);
    EXPECT_EQ(profile.iconURL, std::nullopt);
    EXPECT_EQ(profile.trackId, 6451880007);
}

TEST(AppProfile, AlwaysWritesSortOrderAndLeavesAnAbsentIconOut)
{
    const QByteArray json = toJson(fromJson<AppProfile>(profileJson));
    EXPECT_TRUE(json.contains(R"("sortOrder":0)"));
    EXPECT_FALSE(json.contains("iconURL"));
}

TEST(KeywordSnapshot, OfTheOldestFormReadsAndWritesBackTheSameKeys)
{
    const auto snapshot = fromJson<KeywordSnapshot>(oldestSnapshotJson());
    EXPECT_EQ(snapshot.popularityMeasurement, std::nullopt);
    EXPECT_EQ(snapshot.popularityModelVersion, std::nullopt);
    EXPECT_EQ(snapshot.popularityStatus, std::nullopt);
    EXPECT_EQ(snapshot.autocompleteEvidence, std::nullopt);
    EXPECT_EQ(snapshot.competition, std::nullopt);
    EXPECT_EQ(snapshot.opportunity, std::nullopt);
    EXPECT_EQ(snapshot.scoringModelVersion, std::nullopt);
    EXPECT_EQ(snapshot.position, std::nullopt);
    EXPECT_EQ(toJson(snapshot), oldestSnapshotJson());
}

TEST(KeywordSnapshot, WithoutDifficultyComponentsDoesNotRead)
{
    EXPECT_TRUE(
        failureOf<KeywordSnapshot>(
            without(oldestSnapshotJson(), R"("difficultyComponents":)" + componentsJson + ","))
            .contains(QStringLiteral("difficultyComponents")));
}

TEST(KeywordSnapshot, AMissingWeightIsNamedWithItsPlace)
{
    EXPECT_EQ(failureOf<KeywordSnapshot>(without(oldestSnapshotJson(), R"(,"matchWeight":0.3)")),
              QStringLiteral("The data couldn’t be read: at “difficultyComponents.matchWeight” a "
                             "required value is missing."));
}

TEST(KeywordSnapshot, EveryRequiredKeyIsRequired)
{
    for (const char *key : {"id", "trackedKeywordId", "keyword", "country", "fetchedAt",
                            "difficultyScore", "difficultyComponents", "competitorIcons"}) {
        QByteArray json = oldestSnapshotJson();
        json.replace('"' + QByteArray(key) + "\":", '"' + QByteArray(key) + "X\":");
        EXPECT_TRUE(failureOf<KeywordSnapshot>(json).contains(QString::fromUtf8(key))) << key;
    }
}

TEST(KeywordSnapshot, AnOptionalFieldOfTheWrongTypeDoesNotRead)
{
    QByteArray json = oldestSnapshotJson();
    json.chop(1);
    EXPECT_TRUE(failureOf<KeywordSnapshot>(json + R"(,"popularityScore":"5"})")
                    .contains(QStringLiteral("popularityScore")));
    EXPECT_TRUE(failureOf<KeywordSnapshot>(json + R"(,"competition":[]})")
                    .contains(QStringLiteral("competition")));
}

TEST(KeywordSnapshot, NullMeansNoValueInOptionalFieldsOnly)
{
    QByteArray json = oldestSnapshotJson();
    EXPECT_EQ(
        fromJson<KeywordSnapshot>(json.replace("\"country\"", "\"position\":null,\"country\""))
            .position,
        std::nullopt);
    EXPECT_TRUE(failureOf<KeywordSnapshot>(json.replace("\"country\":\"US\"", "\"country\":null"))
                    .contains(QStringLiteral("country")));
}

TEST(KeywordSnapshot, DiffersWhenOnlyTheStatusDiffers)
{
    auto one = fromJson<KeywordSnapshot>(oldestSnapshotJson());
    auto other = one;
    EXPECT_EQ(one, other);
    EXPECT_EQ(hashValue(one), hashValue(other));
    other.popularityStatus = QStringLiteral("Popularity unavailable.");
    EXPECT_NE(one, other);
    EXPECT_NE(hashValue(one), hashValue(other));
}

TEST(DifficultyComponents, WithoutTheCountsReadsWithThemEmpty)
{
    const auto components = fromJson<DifficultyComponents>(componentsJson);
    EXPECT_EQ(components.sampledAppCount, std::nullopt);
    EXPECT_EQ(components.missingReviewCount, std::nullopt);
    EXPECT_EQ(components.missingReleaseDateCount, std::nullopt);
}

TEST(Records, UuidsAreWrittenUpperCaseAndReadInEitherCase)
{
    QByteArray lower = profileJson;
    lower.replace("E621E1F8-C36C-495A-93FC-0C247A3E6E5F", "e621e1f8-c36c-495a-93fc-0c247a3e6e5f");
    EXPECT_EQ(fromJson<AppProfile>(lower), fromJson<AppProfile>(profileJson));
    EXPECT_TRUE(
        toJson(fromJson<AppProfile>(lower)).contains("E621E1F8-C36C-495A-93FC-0C247A3E6E5F"));
}

TEST(Records, MalformedUuidsDoNotRead)
{
    for (const char *id :
         {"", "E621E1F8C36C495A93FC0C247A3E6E5F", "{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}",
          "E621E1F8-C36C-495A-93FC-0C247A3E6E5G", "E621E1F8-C36C-495A-93FC_0C247A3E6E5F"}) {
        QByteArray json = profileJson;
        json.replace("E621E1F8-C36C-495A-93FC-0C247A3E6E5F", id);
        EXPECT_TRUE(failureOf<AppProfile>(json).contains(QStringLiteral("UUID"))) << id;
    }
}

TEST(Records, UnknownKeysAreIgnoredWhateverTheyHold)
{
    QByteArray json = profileJson;
    json.replace("\"trackId\"", R"("new":{"deep":[1,{"id":"x"},null]},"also":"}","trackId")");
    EXPECT_EQ(fromJson<AppProfile>(json), fromJson<AppProfile>(profileJson));
}

TEST(Records, KeysMayBeEscapedAndInAnyOrder)
{
    EXPECT_EQ(
        fromJson<AppProfile>(
            R"({"country":"US","platform":"iPhone","appN\u0061me":"Lumen","trackId":6451880007,)"
            R"("id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F"})"),
        fromJson<AppProfile>(profileJson));
}

TEST(ITunesAppResult, WithOnlyATrackIdWritesOnlyATrackId)
{
    EXPECT_EQ(toJson(fromJson<ITunesAppResult>(R"({"trackId":42})")), R"({"trackId":42})");
}

TEST(ITunesAppResult, TheIconIsTheFirstArtworkThatIsNotEmpty)
{
    ITunesAppResult app;
    EXPECT_EQ(iconUrl(app), std::nullopt);
    app.artworkUrl60 = QStringLiteral("https://icons.example/60");
    EXPECT_EQ(iconUrl(app)->text(), QStringLiteral("https://icons.example/60"));
    app.artworkUrl512 = QStringLiteral("https://icons.example/512");
    EXPECT_EQ(iconUrl(app)->text(), QStringLiteral("https://icons.example/512"));
    app.artworkUrl100 = QString();
    EXPECT_EQ(iconUrl(app)->text(), QStringLiteral("https://icons.example/512"));
    app.artworkUrl100 = QStringLiteral("https://icons.example/100");
    EXPECT_EQ(iconUrl(app)->text(), QStringLiteral("https://icons.example/100"));
}

TEST(ITunesSearchResponse, NeedsBothItsKeys)
{
    EXPECT_TRUE(failureOf<ITunesSearchResponse>(R"({"results":[]})")
                    .contains(QStringLiteral("resultCount")));
    EXPECT_TRUE(failureOf<ITunesSearchResponse>(R"({"resultCount":0})")
                    .contains(QStringLiteral("results")));
    EXPECT_EQ(
        fromJson<ITunesSearchResponse>("\n\n\n{\n \"resultCount\":0,\n \"results\": []\n}\n\n\n"),
        ITunesSearchResponse());
}

TEST(PopularityMeasurement, CountsAsPopularityOnlyFromItsSourcesAndWithinItsScale)
{
    PopularityMeasurement measurement;
    for (const auto source :
         {popularity_source::appleSearchPopularity, popularity_source::calibratedSearchDemand,
          popularity_source::quorvinCalibratedEstimate}) {
        measurement.source = source;
        for (const auto &[score, shown] : {std::pair(4, false), std::pair(5, true),
                                           std::pair(100, true), std::pair(101, false)}) {
            measurement.score = score;
            EXPECT_EQ(isSearchPopularity(measurement), shown);
            EXPECT_FALSE(isAutocompleteVisibility(measurement));
        }
    }
    measurement.source = popularity_source::appleAutocompleteEstimate;
    measurement.score = 40;
    EXPECT_FALSE(isSearchPopularity(measurement));
    EXPECT_TRUE(isAutocompleteVisibility(measurement));
}

template <class Record>
void expectReadsBackWhatItWrites()
{
    EXPECT_TRUE(rc::check("read(write(x)) = x, with equal hashes", [] {
        const Record record = *rc::gen::arbitrary<Record>();
        const auto readBack = fromJson<Record>(toJson(record));
        RC_ASSERT(readBack == record);
        RC_ASSERT(hashValue(readBack) == hashValue(record));
    }));
}

TEST(Records, ReadBackWhatTheyWrite)
{
    expectReadsBackWhatItWrites<AppProfile>();
    expectReadsBackWhatItWrites<TrackedKeyword>();
    expectReadsBackWhatItWrites<TrackedCompetitor>();
    expectReadsBackWhatItWrites<DifficultyComponents>();
    expectReadsBackWhatItWrites<PopularityMeasurement>();
    expectReadsBackWhatItWrites<AutocompleteProbe>();
    expectReadsBackWhatItWrites<AutocompleteEvidence>();
    expectReadsBackWhatItWrites<CompetitionAssessment>();
    expectReadsBackWhatItWrites<OpportunityAssessment>();
    expectReadsBackWhatItWrites<KeywordSnapshot>();
    expectReadsBackWhatItWrites<ITunesAppResult>();
    expectReadsBackWhatItWrites<ITunesSearchResponse>();
}

} // namespace
} // namespace veltrix
