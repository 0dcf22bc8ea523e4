// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/removals.h"

#include "store/store_fixture.h"

#include <QFile>

namespace veltrix
{
namespace
{

class RemovalsTest : public StoreTest
{
protected:
    RemovalsTest()
    {
        app = addApp(1, "Tideline");
        moon = addKeyword("moon");
        tide = addKeyword("tide", "DE");
        harbour = addKeyword("harbour");
        measure(moon);
        QObject::connect(removals.get(), &Removals::offerChanged,
                         [this] { offers.append(removals->offer()); });
        QObject::connect(removals.get(), &Removals::undone,
                         [this](const QString &text, std::optional<QUuid> appId) {
                             said.append(text);
                             shown = appId;
                         });
        QObject::connect(removals.get(), &Removals::failed,
                         [this](const QString &problem) { said.append(problem); });
    }
    ~RemovalsTest() override { removals.reset(); }

    AppProfile app;
    TrackedKeyword moon;
    TrackedKeyword tide;
    TrackedKeyword harbour;
    std::unique_ptr<Removals> removals = std::make_unique<Removals>(*store);
    QStringList offers;
    QStringList said;
    std::optional<QUuid> shown;
};

TEST_F(RemovalsTest, OneKeywordIsNamedAndSeveralAreCounted)
{
    store->removeKeyword(moon.id);
    store->removeKeywords({tide.id, harbour.id});
    EXPECT_EQ(offers, (QStringList{text("Removed “moon”"), text("Removed 2 keywords")}));
}

TEST_F(RemovalsTest, ThousandsAreGroupedAsTheUserReadsThem)
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QStringList many;
    for (int i = 0; i < 1200; ++i)
        many << QStringLiteral("k%1").arg(i);
    QList<QUuid> ids;
    for (const TrackedKeyword &keyword : store->addTrackedKeywords(app.id, many, text("US")).kept)
        ids.append(keyword.id);
    store->removeKeywords(ids);
    EXPECT_EQ(removals->offer(), text("Removed 1,200 keywords"));
}

TEST_F(RemovalsTest, AppsAndCompetitorsAreNamed)
{
    store->addCompetitor(appResult(7, "Rival"), app.id, text("US"));
    store->removeCompetitor(store->competitors().constFirst().id);
    EXPECT_EQ(removals->offer(), text("Removed Rival"));
    store->removeApp(app.id);
    EXPECT_EQ(removals->offer(), text("Removed Tideline"));
    removals->undo();
    removals->undo();
    EXPECT_EQ(said, (QStringList{text("Restored Tideline"), text("Restored Rival")}));
    EXPECT_EQ(store->competitors().size(), 1);
}

TEST_F(RemovalsTest, NamesFromRightToLeftAndPlaceholdersStandAsTheyAre)
{
    const TrackedKeyword odd = addKeyword("%1 %L1");
    const TrackedKeyword hebrew = addKeyword("מצלמה");
    store->removeKeyword(odd.id);
    EXPECT_EQ(removals->offer(), text("Removed “%1 %L1”"));
    store->removeKeyword(hebrew.id);
    EXPECT_EQ(removals->offer(), text("Removed “\u2068מצלמה\u2069”"));
}

TEST_F(RemovalsTest, TheOfferStandsForTenSeconds)
{
    store->removeKeyword(moon.id);
    clock->advance(Seconds(9.9));
    EXPECT_EQ(removals->offer(), text("Removed “moon”"));
    clock->advance(Seconds(0.2));
    EXPECT_EQ(removals->offer(), QString());
    EXPECT_TRUE(removals->canUndo());
}

TEST_F(RemovalsTest, AnotherRemovalHasTenSecondsOfItsOwn)
{
    store->removeKeyword(moon.id);
    clock->advance(Seconds(8));
    store->removeKeyword(tide.id);
    clock->advance(Seconds(8));
    EXPECT_EQ(removals->offer(), text("Removed “tide”"));
    clock->advance(Seconds(2));
    EXPECT_EQ(removals->offer(), QString());
}

TEST_F(RemovalsTest, RemovalsAreUndoneNewestFirstAlsoAfterTheirTime)
{
    const QByteArray before = stateBytes();
    store->removeKeyword(moon.id);
    store->removeKeywords({tide.id, harbour.id});
    clock->advance(Seconds(3600));
    client->holds = true;
    removals->undo();
    EXPECT_EQ(store->trackedKeywords(), (QList{tide, harbour}));
    removals->undo();
    EXPECT_EQ(stateBytes(), before);
    EXPECT_EQ(said, (QStringList{text("Restored 2 keywords"), text("Restored “moon”")}));
    EXPECT_EQ(shown, app.id);
    EXPECT_FALSE(removals->canUndo());
    removals->undo();
    EXPECT_EQ(said.size(), 2);
}

TEST_F(RemovalsTest, UndoingEndsTheOffer)
{
    store->removeKeyword(moon.id);
    removals->undo();
    EXPECT_EQ(offers, (QStringList{text("Removed “moon”"), QString()}));
}

TEST_F(RemovalsTest, WhatWasNeverMeasuredIsMeasuredWhenItIsBack)
{
    store->removeKeywords({moon.id, tide.id});
    client->searches.clear();
    removals->undo();
    EXPECT_EQ(client->searches, QStringList{text("tide/DE/100")});
}

TEST_F(RemovalsTest, AnAppThatCameAnewTakesItsKeywordsBackAndIsShown)
{
    store->removeApp(app.id);
    const AppProfile anew = addApp(1, "Tideline");
    removals->undo();
    EXPECT_EQ(shown, anew.id);
    EXPECT_EQ(store->keywordsOfApp(anew.id).size(), 3);
    EXPECT_EQ(store->apps().size(), 1);
}

TEST_F(RemovalsTest, UndoneIsUndoneAlsoWhileNothingCanBeSaved)
{
    store->removeKeyword(moon.id);
    // A save that runs would keep the folder from going.
    store->waitUntilSaved();
    scratch->remove();
    removals->undo();
    EXPECT_TRUE(store->trackedKeyword(moon.id).has_value());
    EXPECT_EQ(said, QStringList{text("Restored “moon”")});
    store->waitUntilSaved();
    EXPECT_TRUE(store->hasUnsavedChange());
}

TEST_F(RemovalsTest, OnlyTheNewestFiftyAreKept)
{
    QList<QUuid> ids;
    for (int i = 0; i < 60; ++i)
        ids.append(addKeyword(qPrintable(QStringLiteral("k%1").arg(i))).id);
    for (const QUuid &id : ids)
        store->removeKeyword(id);
    client->holds = true;
    while (removals->canUndo())
        removals->undo();
    EXPECT_EQ(store->trackedKeywords().size(), 3 + 50);
    EXPECT_FALSE(store->trackedKeyword(ids[9]).has_value());
    EXPECT_TRUE(store->trackedKeyword(ids[10]).has_value());
}

} // namespace
} // namespace veltrix
