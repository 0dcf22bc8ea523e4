// SPDX-License-Identifier: GPL-3.0-or-later
// What the store knows beside the user's own ranks: where others stood, what has changed in
// listings, tags and notes; through restarts, removals and a history that fails.
#include "effects/atomic_file.h"
#include "store/history_fixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class StoreComparison : public HistoryStore
{
protected:
    StoreComparison()
    {
        limit = ASOStore::usualStateFileLimit;
        restart();
        owner = addApp();
        moon = addKeyword("moon");
        client->results = {appResult(7, "Rival"), appResult(1, "Tideline"), appResult(8, "Second")};
        finishReading();
    }
    ~StoreComparison() override { stop(); }

    void finishReading() const
    {
        const Outcome<Done> read(finished(store->annotationsRead({})));
        waitFor([&] { return read.isDone(); });
    }
    void startAgain()
    {
        restart();
        finishReading();
        // The removals of the last run go for good.
        finishMoving();
        waitFor([this] { return store->rankDays(moon.id).isWhole(); });
    }
    TrackedCompetitor track(std::int64_t trackId, const char *name, const char *country = "US")
    {
        store->addCompetitor(appResult(trackId, name), owner.id, text(country));
        store->waitUntilSaved();
        return store->competitors().constLast();
    }
    void measureOnADay(const TrackedKeyword &keyword)
    {
        clock->advance(Seconds(secondsPerDay));
        measure(keyword);
        store->waitUntilSaved();
    }
    [[nodiscard]] std::vector<KeywordStandings> standings(const TrackedKeyword &keyword) const
    {
        return resultOf(store->standings(keyword.id, {}));
    }
    [[nodiscard]] ListingHistory listing(const QUuid &id) const
    {
        return resultOf(store->listingHistory(id, {}));
    }
    void tag(const TrackedKeyword &keyword, const char *name, bool isOn = true)
    {
        store->setTag({keyword.id}, text(name), isOn);
        store->waitUntilSaved();
    }
    AppNote write(const char *words, std::int64_t day = 9'000)
    {
        AppNote note;
        note.appId = owner.id;
        note.day = day;
        note.text = text(words);
        note = store->putNote(note);
        store->waitUntilSaved();
        return note;
    }
    [[nodiscard]] std::int64_t rowsOf(const char *table) const
    {
        SqliteDatabase database(historyPath());
        database.execute("PRAGMA busy_timeout = 2000");
        const QByteArray question = QByteArray("SELECT count(*) FROM ") + table;
        SqliteStatement count = database.prepare(question.constData());
        return count.step() ? count.integer(0) : -1;
    }

    AppProfile owner;
    TrackedKeyword moon;
};

TEST_F(StoreComparison, AMeasurementKeepsWhereTheTrackedCompetitorsStood)
{
    const TrackedCompetitor rival = track(7, "Rival");
    const TrackedCompetitor absent = track(70, "Absent");
    QSignalSpy kept(store.get(), &ASOStore::standingsKept);
    measureOnADay(moon);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(kept[0][0].value<QList<QUuid>>(), QList{moon.id});
    const auto found = standings(moon);
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].fetchedAt, store->newestSnapshot(moon.id)->fetchedAt);
    EXPECT_EQ(found[0].rivals,
              (std::vector<RivalStanding>{{rival.id, 1}, {absent.id, std::nullopt}}));
    EXPECT_EQ(
        found[0].leaders,
        (std::vector<LeadingApp>{{7, text("Rival")}, {1, text("Tideline")}, {8, text("Second")}}));
}

TEST_F(StoreComparison, ASearchOfItsOwnIsNotMadeForIt)
{
    track(7, "Rival");
    measureOnADay(moon);
    EXPECT_EQ(client->searches.size(), 1);
    EXPECT_TRUE(discovery->searches.isEmpty());
    EXPECT_TRUE(discovery->lookups.isEmpty());
}

TEST_F(StoreComparison, TheLineOfACompetitorBeginsWhereItIsTracked)
{
    measureOnADay(moon);
    clock->advance(Seconds(3'600));
    const TrackedCompetitor rival = track(7, "Rival");
    const Date tracked = clock->now();
    measureOnADay(moon);
    const auto found = standings(moon);
    ASSERT_EQ(found.size(), 2);
    EXPECT_TRUE(found[0].rivals.empty());
    EXPECT_EQ(found[1].rivals, (std::vector<RivalStanding>{{rival.id, 1}}));
    EXPECT_EQ(listing(rival.id).since, tracked);
}

TEST_F(StoreComparison, CompetitorsOfAnotherAppAreNoneOfThisOne)
{
    const AppProfile other = addApp(2, "Otherline");
    store->addCompetitor(appResult(7, "Rival"), other.id, text("US"));
    measureOnADay(moon);
    EXPECT_TRUE(standings(moon)[0].rivals.empty());
}

TEST_F(StoreComparison, TheNewestOfEachKeywordComeInOneAnswer)
{
    const TrackedKeyword sun = addKeyword("sun");
    addKeyword("never measured");
    const TrackedCompetitor rival = track(7, "Rival");
    measureOnADay(moon);
    measureOnADay(moon);
    measureOnADay(sun);
    const auto found = resultOf(store->newestStandings(owner.id, {}));
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[0].keywordId, moon.id);
    EXPECT_EQ(found[0].fetchedAt, store->newestSnapshot(moon.id)->fetchedAt);
    EXPECT_EQ(found[1].keywordId, sun.id);
}

TEST_F(StoreComparison, WhatTheResultsShowOfListingsIsNoticed)
{
    const TrackedCompetitor rival = track(7, "Rival");
    measureOnADay(moon);
    QSignalSpy changed(store.get(), &ASOStore::listingsChanged);
    client->results[0].trackName = text("Rival Pro");
    client->results[1].version = text("2.0");
    measureOnADay(moon);
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].value<QList<QUuid>>(), QList{rival.id}) << "a first version is no news";
    client->results[1].version = text("2.1");
    measureOnADay(moon);
    const ListingHistory history = listing(rival.id);
    ASSERT_EQ(history.changes.size(), 1);
    EXPECT_EQ(history.changes[0].kind, ListingChangeKind::Name);
    EXPECT_EQ(history.changes[0].earlier, text("Rival"));
    EXPECT_EQ(history.changes[0].later, text("Rival Pro"));
    EXPECT_EQ(history.changes[0].storefront, text("US"));
    ASSERT_EQ(listing(owner.id).changes.size(), 1);
    EXPECT_EQ(listing(owner.id).changes[0].later, text("2.1"));
    startAgain();
    EXPECT_EQ(listing(rival.id), history);
}

TEST_F(StoreComparison, AClockThatWasAYearAheadHidesNothing)
{
    track(7, "Rival");
    measureOnADay(moon);
    clock->advance(Seconds(365 * secondsPerDay));
    measure(moon);
    store->waitUntilSaved();
    clock->jumpTo(clock->now() - Seconds(365 * secondsPerDay));
    EXPECT_EQ(standings(moon).size(), 1);
    ASSERT_EQ(resultOf(store->newestStandings(owner.id, {})).size(), 1);
    EXPECT_LE(resultOf(store->newestStandings(owner.id, {}))[0].fetchedAt, clock->now());
}

TEST_F(StoreComparison, TagsAreThereAtOnceAndAfterARestart)
{
    const TrackedKeyword sun = addKeyword("sun");
    QSignalSpy changed(store.get(), &ASOStore::tagsChanged);
    store->setTag({moon.id, sun.id}, text(" long  tail "), true);
    store->setTag({moon.id}, text("core"), true);
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(store->tags(moon.id), (QStringList{text("core"), text("long tail")}));
    EXPECT_EQ(store->allTags(owner.id), (QStringList{text("core"), text("long tail")}));
    store->setTag({sun.id, moon.id}, text("long tail"), false);
    startAgain();
    EXPECT_EQ(store->tags(moon.id), QStringList{text("core")});
    EXPECT_TRUE(store->tags(sun.id).isEmpty());
}

TEST_F(StoreComparison, NamesThatDifferByCaseAreOneTagInTheFormThatCameFirst)
{
    const TrackedKeyword sun = addKeyword("sun");
    tag(moon, "Core");
    QSignalSpy changed(store.get(), &ASOStore::tagsChanged);
    tag(moon, "core");
    EXPECT_EQ(changed.size(), 0);
    tag(sun, "CORE");
    EXPECT_EQ(store->tags(sun.id), QStringList{text("Core")});
    tag(moon, "core", false);
    EXPECT_TRUE(store->tags(moon.id).isEmpty());
    startAgain();
    EXPECT_TRUE(store->tags(moon.id).isEmpty());
    EXPECT_EQ(store->tags(sun.id), QStringList{text("Core")});
}

TEST_F(StoreComparison, NotesAreThereAtOnceAndAfterARestart)
{
    write("New subtitle", 9'002);
    AppNote first = write("  New icon ", 9'001);
    EXPECT_EQ(first.text, text("New icon"));
    first.text = text("Newer icon");
    store->putNote(first);
    const auto wanted = store->notes(owner.id);
    ASSERT_EQ(wanted.size(), 2);
    EXPECT_EQ(wanted[0].text, text("Newer icon"));
    startAgain();
    EXPECT_EQ(store->notes(owner.id), wanted);
    const auto removed = store->removeNote(first.id);
    EXPECT_EQ(removed, wanted[0]);
    EXPECT_EQ(store->removeNote(first.id), std::nullopt);
    startAgain();
    EXPECT_EQ(store->notes(owner.id), QList{wanted[1]});
    store->putNote(*removed);
    EXPECT_EQ(store->notes(owner.id), wanted);
}

TEST_F(StoreComparison, ANoteWithoutATextOrWithTooLongAOneIsRefused)
{
    EXPECT_THROW(write("  "), StoreError);
    EXPECT_THROW(write(std::string(ASOStore::mostNoteLength + 1, 'x').c_str()), StoreError);
    AppNote stray;
    stray.appId = QUuid::createUuid();
    stray.text = text("words");
    EXPECT_THROW(store->putNote(stray), StoreError);
    EXPECT_TRUE(store->notes(owner.id).isEmpty());
}

TEST_F(StoreComparison, AKeywordTakesItsTagsAndStandingsAlongAndUndoBringsThemBack)
{
    track(7, "Rival");
    measureOnADay(moon);
    tag(moon, "core");
    const auto before = standings(moon);
    RemovedTracking removed = store->removeKeyword(moon.id);
    store->waitUntilSaved();
    store->restore(std::move(removed));
    EXPECT_EQ(store->tags(moon.id), QStringList{text("core")});
    EXPECT_EQ(standings(moon), before);
    startAgain();
    EXPECT_EQ(store->tags(moon.id), QStringList{text("core")});
    store->removeKeyword(moon.id);
    startAgain();
    waitFor([this] { return rowsOf("leader") == 0; });
    EXPECT_EQ(rowsOf("tag"), 0);
    EXPECT_EQ(rowsOf("place"), 0);
}

TEST_F(StoreComparison, WhatIsRemovedInTheVeryFirstSaveGoesAsWell)
{
    store->setTag({moon.id}, text("core"), true);
    store->removeKeyword(moon.id);
    startAgain();
    waitFor([this] { return rowsOf("tag") == 0; });
}

TEST_F(StoreComparison, ACompetitorTakesItsRanksAndChangesAlongAndUndoBringsThemBack)
{
    const TrackedCompetitor rival = track(7, "Rival");
    measureOnADay(moon);
    client->results[0].trackName = text("Rival Pro");
    measureOnADay(moon);
    const ListingHistory before = listing(rival.id);
    RemovedTracking removed = store->removeCompetitor(rival.id);
    store->waitUntilSaved();
    store->restore(std::move(removed));
    startAgain();
    EXPECT_EQ(listing(rival.id), before);
    EXPECT_EQ(standings(moon)[0].rivals.size(), 1);
    store->removeCompetitor(rival.id);
    startAgain();
    waitFor([this] { return rowsOf("place") == 0; });
    EXPECT_EQ(listing(rival.id), ListingHistory());
    EXPECT_TRUE(standings(moon)[0].rivals.empty());
    EXPECT_EQ(rowsOf("listing_change"), 0);
}

TEST_F(StoreComparison, ACompetitorTrackedAnewBeforeTheUndoHasBothPasts)
{
    const TrackedCompetitor rival = track(7, "Rival");
    measureOnADay(moon);
    const std::optional<Date> since = listing(rival.id).since;
    RemovedTracking removed = store->removeCompetitor(rival.id);
    const TrackedCompetitor anew = track(7, "Rival");
    measureOnADay(moon);
    store->restore(std::move(removed));
    store->waitUntilSaved();
    EXPECT_EQ(listing(anew.id).since, since);
    const auto found = standings(moon);
    ASSERT_EQ(found.size(), 2);
    for (const KeywordStandings &day : found)
        EXPECT_EQ(day.rivals, (std::vector<RivalStanding>{{anew.id, 1}}));
}

TEST_F(StoreComparison, AnAppTakesItsNotesAlongAndUndoBringsThemBack)
{
    tag(moon, "core");
    const AppNote note = write("New subtitle");
    RemovedTracking removed = store->removeApp(owner.id);
    store->waitUntilSaved();
    store->restore(std::move(removed));
    startAgain();
    EXPECT_EQ(store->notes(owner.id), QList{note});
    EXPECT_EQ(store->tags(moon.id), QStringList{text("core")});
    store->removeApp(owner.id);
    restart();
    finishMoving();
    waitFor([this] { return rowsOf("note") == 0; });
    EXPECT_EQ(rowsOf("tag"), 0);
    EXPECT_EQ(rowsOf("app"), 0);
}

TEST_F(StoreComparison, AnAppAddedAnewBeforeTheUndoGetsTheNotes)
{
    tag(moon, "core");
    write("New subtitle");
    RemovedTracking removed = store->removeApp(owner.id);
    owner = addApp();
    const TrackedKeyword anew = addKeyword("moon");
    store->restore(std::move(removed));
    EXPECT_EQ(store->notes(owner.id).size(), 1);
    EXPECT_EQ(store->tags(anew.id), QStringList{text("core")});
    moon = anew;
    startAgain();
    EXPECT_EQ(store->notes(owner.id).size(), 1);
    EXPECT_EQ(store->tags(anew.id), QStringList{text("core")});
}

TEST_F(StoreComparison, WhatIsChangedBeforeTheReadingIsNotLost)
{
    tag(moon, "core");
    tag(moon, "title");
    restart();
    store->setTag({moon.id}, text("autumn"), true);
    finishReading();
    EXPECT_EQ(store->tags(moon.id), (QStringList{text("autumn"), text("core"), text("title")}));
}

TEST_F(StoreComparison, WhileTheHistoryFailsTheUsersWordsStayAndAreSavedWhenItIsBack)
{
    tag(moon, "core");
    stop();
    const QByteArray sound = readWholeFile(historyPath());
    writeFileAtomically(historyPath(), "not a database");
    restart();
    // Whoever cannot wait is told why.
    Outcome<Done> required(finished(store->requireAnnotations({})));
    EXPECT_TRUE(required.wait().failureText().contains(text("not a database")));
    EXPECT_TRUE(problem().contains(text("Notes and tags could not be read.")));
    EXPECT_TRUE(Outcome<Done>(finished(store->requireAnnotations({}))).isDone());
    tag(moon, "autumn");
    EXPECT_TRUE(problem().contains(text("Notes and tags could not be saved yet.")))
        << qPrintable(problem());
    EXPECT_TRUE(store->hasUnsavedChange());
    EXPECT_EQ(readWholeFile(historyPath()), "not a database");
    writeFileAtomically(historyPath(), sound);
    clock->advance(ASOStore::persistenceRetryInterval);
    finishReading();
    waitFor([this] { return !store->hasUnsavedChange(); });
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(store->tags(moon.id), (QStringList{text("autumn"), text("core")}));
    startAgain();
    EXPECT_EQ(store->tags(moon.id), (QStringList{text("autumn"), text("core")}));
}

TEST_F(StoreComparison, TheFormOfTheStateFileIsAsItWas)
{
    track(7, "Rival");
    measureOnADay(moon);
    tag(moon, "core");
    write("New subtitle");
    EXPECT_EQ(stateBytes(), toJson(PersistedState{store->apps(), store->trackedKeywords(),
                                                  store->snapshots(), store->competitors()}));
}

} // namespace
} // namespace veltrix
