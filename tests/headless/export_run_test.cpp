// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/export_run.h"

#include "effects/atomic_file.h"
#include "headless/export_tables.h"
#include "headless/keyword_choice.h"
#include "store/history_fixture.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace veltrix
{
namespace
{

class Gathered final : public ExportReceiver
{
public:
    Task<void> take(QByteArray piece, std::stop_token) override
    {
        bytes += piece;
        pieces += piece.isEmpty() ? 0 : 1;
        co_return;
    }
    QByteArray bytes;
    int pieces = 0;
};

template <class Fixture>
class ExportingFrom : public Fixture
{
protected:
    QByteArray exported(const ExportWish &wish)
    {
        ExportRun run(*this->store, exportTables(), gathered);
        gathered.bytes.clear();
        Outcome<Done> running(finished(run.run(wish, this->view.get_token())));
        (void)running.wait().value();
        return gathered.bytes;
    }
    QJsonArray exportedJson(const ExportWish &wish)
    {
        QJsonParseError error;
        const auto document = QJsonDocument::fromJson(exported(wish), &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << gathered.bytes.constData();
        return document.array();
    }
    template <class E>
    E failureOf(const ExportWish &wish)
    {
        try {
            exported(wish);
        } catch (const E &error) {
            return error;
        }
        ADD_FAILURE() << "it has not failed";
        return E(QString());
    }

    Gathered gathered;
    const ExportWish csv{};
    const ExportWish json{{}, {}, true, false};
    const ExportWish csvHistory{{}, {}, false, true};
    const ExportWish jsonHistory{{}, {}, true, true};
};

using Exporting = ExportingFrom<StoreTest>;
using ExportingOldDays = ExportingFrom<HistoryStore>;

TEST_F(Exporting, WritesTheKeywordsAppByAppEachByKeyword)
{
    addKeyword("tide");
    addKeyword("moon");
    addKeyword("moon", "DE");
    EXPECT_EQ(exported(csv), "keyword\nmoon\nmoon\ntide\n");
    EXPECT_EQ(exported({{}, {text("de")}, false, false}), "keyword\nmoon\n");
    EXPECT_EQ(exported({{text("tideline")}, {text("US")}, false, false}), "keyword\nmoon\ntide\n");
}

TEST_F(Exporting, WithoutKeywordsIsTheHeaderOrAnEmptyArray)
{
    EXPECT_EQ(exported(csv), "keyword\n");
    EXPECT_EQ(exported(csvHistory), "measurement\n");
    EXPECT_EQ(exported(json), "[]\n");
    EXPECT_EQ(exported(jsonHistory), "[]\n");
}

TEST_F(Exporting, WritesRawValuesAsJsonAndNullForWhatIsMissing)
{
    addKeyword("tide");
    const QJsonObject before = exportedJson(json).at(0).toObject();
    EXPECT_EQ(before[text("keyword")], text("tide"));
    EXPECT_EQ(before[text("app")], text("Tideline"));
    EXPECT_EQ(before[text("appStoreId")], 1);
    const QStringList values{text("measuredAt"),  text("rank"),         text("change"),
                             text("popularity"),  text("difficulty"),   text("competition"),
                             text("opportunity"), text("target"),       text("change7Days"),
                             text("bestRank"),    text("change30Days"), text("bestRankDay")};
    for (const QString &key : values)
        EXPECT_TRUE(before.contains(key) && before[key].isNull()) << key.toStdString();
    EXPECT_EQ(before[text("tags")], text(""));
    EXPECT_EQ(before.size(), values.size() + 5);

    const TrackedKeyword keyword = store->trackedKeywords().constFirst();
    KeywordSnapshot earlier = snapshotOf(keyword, Seconds(7 * 86'400));
    earlier.position = 6;
    plant(earlier);
    KeywordSnapshot newest = snapshotOf(keyword, Seconds(0));
    newest.position = 9;
    newest.difficultyScore = 41;
    newest.difficultyComponents.sampledAppCount = 25;
    newest.competition = CompetitionAssessment{63, 25, {}, {}};
    plant(newest);
    const QJsonObject after = exportedJson(json).at(0).toObject();
    EXPECT_EQ(after[text("measuredAt")], formatInternetDateTime(newest.fetchedAt));
    EXPECT_EQ(after[text("rank")], 9);
    EXPECT_EQ(after[text("difficulty")], 41);
    EXPECT_EQ(after[text("competition")], 63);
    const QJsonObject down{{text("places"), -3}, {text("movement"), text("down")}};
    EXPECT_EQ(after[text("change")].toObject(), down);
    EXPECT_EQ(after[text("change7Days")].toObject(), down);
    EXPECT_TRUE(after[text("change30Days")].isNull());
    EXPECT_EQ(after[text("bestRank")], 6);
    EXPECT_EQ(after[text("bestRankDay")], formatInternetDateTime(earlier.fetchedAt).left(10));
}

TEST_F(Exporting, WaitsForTheTagsAndJoinsThem)
{
    addKeyword("tide");
    const QUuid id = store->trackedKeywords().constFirst().id;
    store->setTag({id}, text("title"), true);
    store->setTag({id}, text("Core"), true);
    ASSERT_TRUE(store->saveBeforeEnd());
    start();
    EXPECT_TRUE(store->tags(id).isEmpty()) << "they are read after the start";
    EXPECT_EQ(exportedJson(json).at(0).toObject()[text("tags")], text("Core; title"));
}

TEST_F(Exporting, TellsALostRankWithoutPlaces)
{
    const TrackedKeyword keyword = addKeyword("tide");
    KeywordSnapshot earlier = snapshotOf(keyword, Seconds(86'400));
    earlier.position = 6;
    plant(earlier);
    KeywordSnapshot newest = snapshotOf(keyword, Seconds(0));
    newest.position.reset();
    plant(newest);
    const QJsonObject row = exportedJson(json).at(0).toObject();
    EXPECT_TRUE(row[text("rank")].isNull());
    EXPECT_FALSE(row[text("measuredAt")].isNull());
    const QJsonObject left{{text("places"), QJsonValue()}, {text("movement"), text("left")}};
    EXPECT_EQ(row[text("change")].toObject(), left);
}

TEST_F(Exporting, WritesAHistoryOfAnyLengthPageByPage)
{
    const TrackedKeyword keyword = addKeyword("tide");
    addKeyword("moon");
    PersistedState state{store->apps(), store->trackedKeywords(), {}, {}};
    constexpr int days = 500;
    for (int day = days; day > 0; --day) {
        KeywordSnapshot snapshot = snapshotOf(keyword, Seconds(day * 86'400.0));
        snapshot.position = day;
        state.snapshots.push_back(std::make_shared<const KeywordSnapshot>(snapshot));
    }
    writeState(state);
    start();
    QByteArray expected = "measurement\n";
    for (int day = days; day > 0; --day)
        expected += "tide " + QByteArray::number(day) + '\n';
    EXPECT_EQ(exported(csvHistory), expected);
    const QJsonArray records = exportedJson(jsonHistory);
    ASSERT_EQ(records.size(), days);
    const QJsonObject last = records.at(days - 1).toObject();
    EXPECT_EQ(last[text("app")], text("Tideline"));
    EXPECT_EQ(last[text("keyword")], text("tide"));
    EXPECT_EQ(last[text("position")], 1);
    EXPECT_EQ(last[text("fetchedAt")], formatInternetDateTime(state.snapshots.back()->fetchedAt));
    EXPECT_TRUE(last.contains(text("opportunity")) && last[text("opportunity")].isNull());
}

TEST_F(ExportingOldDays, WritesThemWithThoseOfTheStateFile)
{
    const TrackedKeyword keyword = addKeyword("tide");
    constexpr int days = 300;
    measureDaily(keyword, days);
    ASSERT_TRUE(hasMovedDays());
    ASSERT_LT(stateOnDisk().snapshots.size(), days / 2);
    const QJsonArray records = exportedJson(jsonHistory);
    ASSERT_EQ(records.size(), days);
    EXPECT_GT(gathered.pieces, 2) << "pages, and the end";
    QStringList dates;
    for (const QJsonValue &record : records)
        dates.append(record.toObject()[text("fetchedAt")].toString().left(10));
    EXPECT_EQ(QSet<QString>(dates.begin(), dates.end()).size(), days);
    EXPECT_TRUE(std::is_sorted(dates.begin(), dates.end()));
    EXPECT_EQ(exported(csvHistory).count('\n'), days + 1);

    const QJsonObject row = exportedJson(json).at(0).toObject();
    EXPECT_EQ(row[text("bestRankDay")], dates.constFirst()) << "known from the oldest day";
}

TEST_F(ExportingOldDays, WritesTheNotesOfTheDayAndWhereCompetitorsStood)
{
    const TrackedKeyword keyword = addKeyword("tide");
    client->results = {appResult(7, "Rival"), appResult(1, "Tideline")};
    measureDaily(keyword, 1);
    store->addCompetitor(appResult(7, "Rival"), keyword.appId, text("US"));
    store->addCompetitor(appResult(8, "Other"), keyword.appId, text("US"));
    measureDaily(keyword, 1);
    store->putNote(
        {QUuid(), keyword.appId, utcDay(clock->now()), text("New subtitle"), clock->now()});
    finishMoving();
    const QJsonArray records = exportedJson(jsonHistory);
    ASSERT_EQ(records.size(), 2);
    const QJsonObject first = records.at(0).toObject();
    EXPECT_TRUE(first[text("notes")].toArray().isEmpty());
    EXPECT_TRUE(first[text("competitors")].toArray().isEmpty()) << "they were not tracked then";
    const QJsonObject last = records.at(1).toObject();
    EXPECT_EQ(last[text("notes")].toArray(), QJsonArray{text("New subtitle")});
    const QJsonArray competitors{
        QJsonObject{{text("name"), text("Rival")}, {text("appStoreId"), 7}, {text("rank"), 1}},
        QJsonObject{
            {text("name"), text("Other")}, {text("appStoreId"), 8}, {text("rank"), QJsonValue()}}};
    EXPECT_EQ(last[text("competitors")].toArray(), competitors);
}

TEST_F(Exporting, OfWhatIsNotTrackedIsRefused)
{
    addKeyword("tide");
    EXPECT_EQ(failureOf<UnknownChoice>({{text("Nobody")}, {}, true, true}).description(),
              text("No app is called “Nobody”. There are “Tideline”."));
    EXPECT_EQ(gathered.pieces, 0);
}

TEST_F(Exporting, OfAStateThatCouldNotBeReadFailsAndIsNotEmpty)
{
    stop();
    QDir().mkpath(statePath());
    start();
    EXPECT_EQ(failureOf<Error>(csv).description(), problem());
    EXPECT_EQ(gathered.pieces, 0);
}

TEST_F(Exporting, OfADamagedStateFailsAndIsNotEmpty)
{
    addKeyword("tide");
    stop();
    writeFileAtomically(statePath(), readWholeFile(statePath()).chopped(20));
    start();
    EXPECT_EQ(failureOf<Error>(json).description(), problem());
    EXPECT_EQ(gathered.pieces, 0);
}

TEST_F(Exporting, OfAHistoryThatCannotBeReadFailsAndIsNotShorter)
{
    addKeyword("tide");
    stop();
    QFile history(folder.filePath(text("history.sqlite")));
    ASSERT_TRUE(history.open(QIODevice::WriteOnly));
    history.write(QByteArray(8192, 'x'));
    history.close();
    start();
    for (const ExportWish &wish : {csv, json, csvHistory, jsonHistory})
        EXPECT_FALSE(failureOf<Error>(wish).description().isEmpty());
}

} // namespace
} // namespace veltrix
