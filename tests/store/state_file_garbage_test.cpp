// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that a state file can hold but should not. Whatever it is: one line, an empty store,
// the file as it was, a copy of it before the first save, no crash.
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "store/store_fixture.h"

#include <random>

namespace veltrix
{
namespace
{

/// A state that has every record and every optional field.
PersistedState fullState()
{
    PersistedState state;
    const Url icon = *Url::fromText(text("https://icons.example/größe/1.png"));
    const AppProfile app{QUuid::createUuid(), 1, text("Tideline \"Pro\""), text("iPhone"), icon,
                         text("US"),          0};
    const TrackedKeyword keyword{QUuid::createUuid(), app.id, text("潮汐 \\ tide"), text("JP"),
                                 dateFromReferenceSeconds(816868800.25)};
    KeywordSnapshot snapshot;
    snapshot.id = QUuid::createUuid();
    snapshot.trackedKeywordId = keyword.id;
    snapshot.keyword = keyword.keyword;
    snapshot.country = keyword.country;
    snapshot.fetchedAt = dateFromReferenceSeconds(816868812.5);
    snapshot.popularityRaw = 317.25;
    snapshot.popularityScore = 42;
    snapshot.difficultyScore = 61;
    snapshot.difficultyComponents = {10, 1, 0, 812.4, 3.25, 0.55, 0.7, 0.4, 0.5, 0.5, 0.2, 0.3};
    snapshot.position = 12;
    snapshot.competitorIcons = {icon, icon};
    snapshot.popularityMeasurement = PopularityMeasurement{
        42, QString(popularity_source::quorvinCalibratedEstimate), text("v2"), 25, 11, 317.25};
    snapshot.popularityModelVersion = text("v2");
    snapshot.popularityStatus = text("Estimated from \n ratings.");
    snapshot.autocompleteEvidence = AutocompleteEvidence{
        keyword.keyword,
        text("JP"),
        text("143462-9,29"),
        text("ja-jp"),
        {AutocompleteProbe{text("潮"), {text("潮汐"), text("潮見")}, snapshot.fetchedAt, 1}},
        5,
        3,
        44,
        6,
        false};
    snapshot.competition =
        CompetitionAssessment{55, 25, {{text("Authority"), 71.5}, {text("Title match"), 40}}, {}};
    snapshot.opportunity = OpportunityAssessment{61, text("Good Target"), text("Why."), 50.5, true};
    snapshot.scoringModelVersion = text("v1");
    state.apps = {app};
    state.trackedKeywords = {keyword};
    state.snapshots = {std::make_shared<const KeywordSnapshot>(snapshot)};
    state.competitors = {TrackedCompetitor{QUuid::createUuid(), app.id, 7, text("Harbour Clock"),
                                           icon, text("US"), text("Quayside Ltd")}};
    return state;
}

/// What every unreadable file has to lead to.
void expectRefused(const QByteArray &bytes, const char *reason = "")
{
    const auto folder = scratchFolder();
    const QString path = folder->filePath(text("state.json"));
    writeFileAtomically(path, bytes);
    StateFile file(path);
    testing::internal::CaptureStdout();
    const PersistedState loaded = file.load();
    const std::string line = testing::internal::GetCapturedStdout();
    const std::string begin = "ASOStore load failed: The data couldn’t be read: ";
    EXPECT_EQ(line.substr(0, begin.size()), begin);
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
    EXPECT_NE(line.find(reason), std::string::npos) << line;
    EXPECT_TRUE(loaded.apps.isEmpty() && loaded.trackedKeywords.isEmpty() &&
                loaded.snapshots.empty() && loaded.competitors.isEmpty());
    EXPECT_TRUE(file.problem().has_value());
    ASSERT_TRUE(readWholeFile(path) == bytes);

    file.save(PersistedState(), Date());
    EXPECT_TRUE(readWholeFile(
                    folder->filePath(text("state.unreadable-2001-01-01T00-00-00Z.json"))) == bytes);
    EXPECT_EQ(readWholeFile(path), toJson(PersistedState()));
}

TEST(Garbage, NothingAtAll)
{
    expectRefused("", "it is not well-formed JSON");
}

TEST(Garbage, WhiteSpaceAndZeroBytes)
{
    for (const int count : {1, 63, 64, 65, 4096, 100'000}) {
        expectRefused(QByteArray(count, ' '));
        expectRefused(QByteArray(count, '\n'));
        expectRefused(QByteArray(count, '\0'));
    }
}

TEST(Garbage, AStateFollowedByZeroBytes)
{
    expectRefused(toJson(fullState()) + QByteArray(512, '\0'));
}

TEST(Garbage, OtherJson)
{
    for (const char *json : {"null", "true", "42", "\"state\"", "[]", "[{}]", "[[[]]]", "nul", "{"})
        expectRefused(json);
    expectRefused("{}", "at “apps” a required value is missing");
}

TEST(Garbage, OtherFileTypes)
{
    expectRefused(QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    expectRefused(QByteArray("PK\x03\x04\x14\0\0\0", 8));
    expectRefused("<?xml version=\"1.0\"?><plist/>");
    expectRefused(QByteArray("\xFF\xFE{\0}\0", 6));
}

TEST(Garbage, TwoStatesOneAfterTheOther)
{
    const QByteArray state = toJson(fullState());
    expectRefused(state + state, "there is more text after its end");
    expectRefused(state + "}");
    expectRefused(state + "garbage");
}

TEST(Garbage, AStateCutOffAnywhere)
{
    const QByteArray state = toJson(fullState());
    ASSERT_GT(state.size(), 2000);
    for (qsizetype length = 0; length < state.size(); length += 10)
        expectRefused(state.left(length));
    expectRefused(state.left(state.size() - 1));
}

TEST(Garbage, AStateWithOneByteBroken)
{
    const QByteArray state = toJson(fullState());
    int refused = 0;
    // Not each of these is an error (a letter of a name may change), but none may crash, and
    // whatever is read must come back the same from what is then written.
    for (qsizetype place = 0; place < state.size(); ++place) {
        for (const char byte : {'\0', '"', '\\', '{', ']', ',', ':', '\xFF', '9', 'e'}) {
            QByteArray broken = state;
            broken[place] = byte;
            try {
                const QByteArray written = toJson(fromJson<PersistedState>(broken));
                ASSERT_EQ(toJson(fromJson<PersistedState>(written)), written)
                    << place << ' ' << byte;
            } catch (const DecodingError &) {
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, state.size() * 5);
}

TEST(Garbage, WrongTypesEverywhere)
{
    const QByteArray state = toJson(fullState());
    const struct {
        const char *right;
        const char *wrong;
        const char *reason;
    } cases[] = {
        {R"("apps":[)", R"("apps":{"x":)", "at “apps” a list was expected"},
        {R"("trackId":1,)", R"("trackId":"1",)",
         "at “apps[0].trackId” a whole number of 64 bits was expected"},
        {R"("trackId":1,)", R"("trackId":1.5,)",
         "at “apps[0].trackId” a whole number of 64 bits was expected"},
        {R"("trackId":1,)", R"("trackId":9223372036854775808,)",
         "at “apps[0].trackId” a whole number of 64 bits was expected"},
        {R"("trackId":1,)", R"("trackId":null,)", "apps[0].trackId"},
        {R"("trackId":1,)", "", "at “apps[0].trackId” a required value is missing"},
        {R"("platform":"iPhone")", R"("platform":5)", "at “apps[0].platform” a text was expected"},
        {R"("platform":"iPhone")", R"("platform":"\ud800")", "at “apps[0].platform”"},
        {R"("platform":"iPhone")", R"("platform":["iPhone"])", "a text was expected"},
        {R"("createdAt":816868800.25)", R"("createdAt":"2026-11-21T00:00:00Z")",
         "at “trackedKeywords[0].createdAt” a number was expected"},
        {R"("createdAt":816868800.25)", R"("createdAt":1e999)", "trackedKeywords[0].createdAt"},
        {R"("createdAt":816868800.25)", R"("createdAt":NaN)", "trackedKeywords[0].createdAt"},
        {R"("competitorIcons":[)", R"("competitorIcons":["",)",
         "at “snapshots[0].competitorIcons” a URL was expected"},
        {R"("matchWeight":0.3)", R"("other":0.3)",
         "at “snapshots[0].difficultyComponents.matchWeight” a required value is missing"},
        {R"("position":12)", R"("position":"12")", "snapshots[0].position"},
        {R"("usedNewAppBaseline":true)", R"("usedNewAppBaseline":1)",
         "at “snapshots[0].opportunity.usedNewAppBaseline” true or false was expected"},
        {R"("Authority":71.5)", R"("Authority":"71.5")",
         "at “snapshots[0].competition.factors.Authority” a number was expected"},
        {R"("suggestions":["潮汐",)", R"("suggestions":[7,)",
         "at “snapshots[0].autocompleteEvidence.probes[0].suggestions” a text was expected"},
        {R"("sellerName":"Quayside Ltd")", R"("sellerName":{})", "competitors[0].sellerName"},
    };
    for (const auto &one : cases) {
        QByteArray wrong = state;
        ASSERT_TRUE(wrong.contains(one.right)) << one.right;
        wrong.replace(one.right, one.wrong);
        SCOPED_TRACE(one.wrong);
        expectRefused(wrong, one.reason);
    }
    const QByteArray uuid = QByteArray::fromStdString(
        fullState().apps[0].id.toString(QUuid::WithoutBraces).toUpper().toStdString());
    for (const char *wrong : {"not-a-uuid", "E621E1F8C36C495A93FC0C247A3E6E5F",
                              "{E621E1F8-C36C-495A-93FC-0C247A3E6E5}", ""}) {
        QByteArray text = state;
        text.replace(text.indexOf(R"("id":")") + 6, uuid.size(), wrong);
        expectRefused(text, "at “apps[0].id” a UUID was expected");
    }
}

TEST(Garbage, OldFilesAndUnknownKeysAreNoGarbage)
{
    QByteArray state = toJson(fullState());
    state.replace(R"("sortOrder":0)", R"("sortOrder":null)");
    state.replace(R"("position":12)", R"("position":null,"new":{"deep":[1,{"x":"]"}]})");
    state.replace(R"("trackId":1,)", R"("trackId":1.0,)");
    const auto folder = scratchFolder();
    const QString path = folder->filePath(text("state.json"));
    writeFileAtomically(path, "\r\n \t" + state + "\n");
    StateFile file(path);
    EXPECT_EQ(file.load().snapshots.size(), 1U);
    EXPECT_EQ(file.problem(), std::nullopt);
}

TEST(Garbage, NestingAHundredThousandDeep)
{
    constexpr int depth = 100'000;
    QByteArray objects;
    for (int i = 0; i < depth; ++i)
        objects += R"({"apps":)";
    const QByteArray lists = QByteArray(depth, '[') + QByteArray(depth, ']');
    expectRefused(QByteArray(depth, '['));
    expectRefused(lists);
    expectRefused(objects);
    expectRefused(objects + "1" + QByteArray(depth, '}'));
    expectRefused(R"({"apps":)" + lists + "}");
    expectRefused(R"({"apps":[],"trackedKeywords":[],"snapshots":)" + lists + "}");

    // Under a key that nobody knows it is skipped without a recursion.
    const auto folder = scratchFolder();
    const QString path = folder->filePath(text("state.json"));
    writeFileAtomically(path,
                        R"({"x":)" + lists + R"(,"apps":[],"trackedKeywords":[],"snapshots":[]})");
    StateFile file(path);
    file.load();
    EXPECT_EQ(file.problem(), std::nullopt);
}

TEST(Garbage, TwoHundredMegabytesOfNonsense)
{
    constexpr qsizetype size = 200'000'000;
    QByteArray nonsense(size, Qt::Uninitialized);
    std::mt19937_64 random(7);
    for (qsizetype i = 0; i + 8 <= size; i += 8) {
        const std::uint64_t word = random();
        std::memcpy(nonsense.data() + i, &word, 8);
    }
    expectRefused(nonsense);
    // Well-formed as far as one can see, and without an end.
    nonsense.fill('[');
    expectRefused(nonsense);
}

} // namespace
} // namespace veltrix
