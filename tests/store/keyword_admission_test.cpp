// SPDX-License-Identifier: GPL-3.0-or-later
// What may be tracked, what became of the rest, and which keywords of older files cannot be
// measured.
#include "store/keyword_admission.h"

#include "json/json_reader.h"
#include "store/store_fixture.h"

#include <QFile>

namespace veltrix
{
namespace
{

class KeywordAdmissionTest : public StoreTest
{
protected:
    QUuid appId() { return store->apps().isEmpty() ? addApp().id : store->apps().constFirst().id; }
    KeywordAdmission add(const QStringList &keywords, const char *country = "US")
    {
        KeywordAdmission admission = store->addTrackedKeywords(appId(), keywords, text(country));
        store->waitUntilSaved();
        return admission;
    }
    /// The error of adding this one, as "code text"; empty when it was added.
    QString refusalOf(const QString &keyword, const QString &country = text("US"))
    {
        try {
            store->addTrackedKeyword(appId(), keyword, country);
            return {};
        } catch (const StoreError &error) {
            return QStringLiteral("%1 %2").arg(error.code()).arg(error.description());
        }
    }
};

TEST_F(KeywordAdmissionTest, WhatCannotBeMeasuredStaysOutAndTheRestIsAdded)
{
    addKeyword("tide");
    const QString tooLong(101, u'x');
    const KeywordAdmission admission = add({text("moon"), tooLong, text(" \n"), text("Tide"),
                                            text("harbour\x1b clock"), text("star")});
    QStringList kept;
    for (const TrackedKeyword &keyword : admission.kept)
        kept << keyword.keyword;
    EXPECT_EQ(kept, (QStringList{text("moon"), text("tide"), text("star")}));
    EXPECT_EQ(admission.added, 2);
    EXPECT_EQ(admission.alreadyTracked(), 1);
    EXPECT_EQ(admission.refused,
              (QList<RefusedKeyword>{
                  {tooLong, text("US"), KeywordRefusal::TooLong},
                  {text(" \n"), text("US"), KeywordRefusal::Empty},
                  {text("harbour\x1b clock"), text("US"), KeywordRefusal::ControlCharacter}}));
    EXPECT_EQ(stateOnDisk().trackedKeywords.size(), 3);
}

TEST_F(KeywordAdmissionTest, AStorefrontThatCannotBeChosenRefusesItsKeywordsByTheNameItWasGiven)
{
    const KeywordAdmission admission = add({text("moon"), text("tide")}, "uk");
    EXPECT_TRUE(admission.kept.isEmpty());
    EXPECT_EQ(
        admission.refused,
        (QList<RefusedKeyword>{{text("moon"), text("uk"), KeywordRefusal::UnknownStorefront},
                               {text("tide"), text("uk"), KeywordRefusal::UnknownStorefront}}));
    EXPECT_TRUE(stateOnDisk().trackedKeywords.isEmpty());
}

TEST_F(KeywordAdmissionTest, KeywordsOfSeveralStorefrontsAreAddedInTheirOrderWithOneSave)
{
    addKeyword("tide", "DE");
    qsizetype signalled = 0;
    QObject::connect(store.get(), &ASOStore::keywordAdded, [&] {
        ++signalled;
        EXPECT_EQ(fromJson<PersistedState>(stateBytes()).trackedKeywords.size(), 1)
            << "saved before all were there";
    });
    const KeywordAdmission admission =
        store->addTrackedKeywords(appId(), {{text("moon"), text("US")},
                                            {text("moon"), text("de")},
                                            {text("Tide"), text("DE")},
                                            {text("MOON"), text("us")},
                                            {text("moon"), text("UK")}});
    QStringList kept;
    for (const TrackedKeyword &keyword : admission.kept)
        kept << keyword.keyword + u'@' + keyword.country;
    EXPECT_EQ(kept.join(u' '), text("moon@US moon@DE tide@DE"));
    EXPECT_EQ(admission.added, 2);
    EXPECT_EQ(signalled, 2);
    EXPECT_EQ(admission.refused, (QList<RefusedKeyword>{{text("moon"), text("UK"),
                                                         KeywordRefusal::UnknownStorefront}}));
    EXPECT_EQ(stateOnDisk().trackedKeywords.size(), 3);
}

TEST_F(KeywordAdmissionTest, TheSameTextTwiceInOneInputCountsOnce)
{
    addKeyword("tide");
    const QString tooLong(101, u'x');
    const KeywordAdmission admission =
        add({text("moon"), text("MOON"), text("tide"), text("Tide"), tooLong, tooLong.toUpper()});
    EXPECT_EQ(admission.added, 1);
    EXPECT_EQ(admission.alreadyTracked(), 1);
    EXPECT_EQ(admission.refused.size(), 1);
}

TEST_F(KeywordAdmissionTest, NothingIsSavedWhenNothingIsNew)
{
    addKeyword("tide");
    QFile::remove(statePath());
    add({text("Tide"), QString(101, u'x')});
    EXPECT_FALSE(QFile::exists(statePath()));
}

TEST_F(KeywordAdmissionTest, OneKeywordThatCannotBeMeasuredIsAnErrorInWords)
{
    EXPECT_EQ(refusalOf(QString()), text("422 “” cannot be measured: no text."));
    EXPECT_EQ(refusalOf(QString(101, u'x')),
              QStringLiteral("422 “%1…” cannot be measured: longer than 100 characters.")
                  .arg(QString(24, u'x')));
    EXPECT_EQ(refusalOf(text("photo\teditor")),
              text("422 “photo�editor” cannot be measured: contains a control character."));
    EXPECT_EQ(refusalOf(text("photo"), text("uk")),
              text("422 “photo” cannot be measured: “uk” is not a supported storefront."));
    EXPECT_EQ(refusalOf(text("photo"), QString()),
              text("422 “photo” cannot be measured: no storefront."));
    EXPECT_TRUE(store->trackedKeywords().isEmpty());
    EXPECT_EQ(refusalOf(text("photo")), QString());
}

TEST_F(KeywordAdmissionTest, WithoutItsAppNothingIsTracked)
{
    const QUuid gone = addApp().id;
    store->removeApp(gone);
    try {
        store->addTrackedKeywords(gone, {text("moon")}, text("US"));
        FAIL() << "no error";
    } catch (const StoreError &error) {
        EXPECT_EQ(error.code(), 404);
        EXPECT_EQ(error.description(), text("App not found"));
    }
    EXPECT_THROW(store->addTrackedKeyword(gone, text("moon"), text("US")), StoreError);
    EXPECT_TRUE(store->trackedKeywords().isEmpty());
}

TEST_F(KeywordAdmissionTest, AFailedSaveIsAnUnsavedChangeUntilOneSucceeds)
{
    EXPECT_FALSE(store->hasUnsavedChange());
    addApp();
    EXPECT_FALSE(store->hasUnsavedChange());
    ASSERT_TRUE(QFile::rename(folder.path(), folder.path() + text(".away")));
    add({text("moon")});
    EXPECT_TRUE(store->hasUnsavedChange());
    ASSERT_TRUE(QFile::rename(folder.path() + text(".away"), folder.path()));
    add({text("tide")});
    EXPECT_FALSE(store->hasUnsavedChange());
}

TEST_F(KeywordAdmissionTest, KeywordsOfAnOlderFileThatCannotBeMeasuredAreToldApartWithTheReason)
{
    const AppProfile app = addApp();
    const TrackedKeyword good = addKeyword("moon");
    const auto other = [&](const QString &keyword, const char *country, QUuid id) {
        return TrackedKeyword{QUuid::createUuid(), id, keyword, text(country), clock->now()};
    };
    const QList<TrackedKeyword> keywords{other(QString(101, u'x'), "US", app.id),
                                         other(text("a\x01"), "US", app.id),
                                         other(text("photo"), "UK", app.id),
                                         other(text(" "), "US", app.id),
                                         other(text("tide"), "US", QUuid()),
                                         other(text("photo"), "UK", QUuid()),
                                         good};
    writeState({store->apps(), keywords, {}, {}});
    start();
    QStringList reasons;
    for (const TrackedKeyword &keyword : store->trackedKeywords())
        reasons << store->unmeasurableReason(keyword).value_or(text("none"));
    EXPECT_EQ(reasons,
              (QStringList{text("longer than 100 characters"), text("contains a control character"),
                           text("“UK” is not a supported storefront"), text("no text"),
                           text("its app is no longer tracked"),
                           text("“UK” is not a supported storefront"), text("none")}));
}

TEST_F(KeywordAdmissionTest, KeywordsWhoseAppIsGoneAreFoundAndCanBeRemoved)
{
    const TrackedKeyword good = addKeyword("moon");
    TrackedKeyword first{QUuid::createUuid(), QUuid::createUuid(), text("tide"), text("US"),
                         clock->now()};
    TrackedKeyword second{QUuid::createUuid(), QUuid::createUuid(), text("star"), text("DE"),
                          clock->now()};
    const auto snapshot = std::make_shared<const KeywordSnapshot>(snapshotOf(first, Seconds(60)));
    writeState({store->apps(), {first, good, second}, {snapshot}, {}});
    start();
    EXPECT_EQ(store->keywordsWithoutApp(), (QList<TrackedKeyword>{first, second}));
    store->removeKeywords({first.id, second.id});
    EXPECT_TRUE(store->keywordsWithoutApp().isEmpty());
    EXPECT_EQ(stateOnDisk().trackedKeywords, QList<TrackedKeyword>{good});
    EXPECT_TRUE(stateOnDisk().snapshots.empty());
}

TEST(QuotedKeyword, IsTrimmedAndCutAfterTwentyFourCharacters)
{
    EXPECT_EQ(quotedKeyword(text("מצלמה")), text("“\u2068מצלמה\u2069”"));
    EXPECT_EQ(quotedKeyword(text(" photo editor\n")), text("“photo editor”"));
    EXPECT_EQ(quotedKeyword(QString(24, u'x')), u'“' + QString(24, u'x') + u'”');
    EXPECT_EQ(quotedKeyword(text("📷").repeated(25)), u'“' + text("📷").repeated(24) + text("…”"));
}

} // namespace
} // namespace veltrix
