// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/ui_test.h"

namespace veltrix
{
namespace
{

class KeywordTableModelTest : public UiTest
{
protected:
    KeywordTableModelTest()
    {
        world = UiWorld::sample();
        tested = std::make_unique<KeywordTableModel>(store());
        tester = std::make_unique<QAbstractItemModelTester>(
            tested.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        app = store().apps().first().id;
    }

    QString order(int most = 100)
    {
        QStringList keywords;
        for (int row = 0; row < std::min(most, tested->rowCount()); ++row)
            keywords << tested->entryAt(row).row.keyword;
        return keywords.join(u'|');
    }
    QUuid idOf(const char *keyword)
    {
        for (const TrackedKeyword &tracked : store().trackedKeywords()) {
            if (tracked.keyword == QString::fromUtf8(keyword))
                return tracked.id;
        }
        ADD_FAILURE() << keyword;
        return {};
    }
    QVariant at(int row, KeywordColumn column, int role)
    {
        return tested->index(row, int(column)).data(role);
    }

    std::unique_ptr<KeywordTableModel> tested;
    std::unique_ptr<QAbstractItemModelTester> tester;
    QUuid app;
};

const QString byName = QStringLiteral(
    "bildbearbeitung|collage maker|film camera filter|grain filter|light leak effect|passport "
    "photo booth|photo editor|photo journal|polaroid frame|remove background|retro photo");

TEST_F(KeywordTableModelTest, ShowsNothingWithoutAnApp)
{
    EXPECT_EQ(tested->rowCount(), 0);
    tested->setApp(app);
    EXPECT_EQ(tested->rowCount(), 11);
    tested->setApp(store().apps().last().id);
    EXPECT_EQ(tested->rowCount(), 0);
    tested->setApp(std::nullopt);
    EXPECT_EQ(tested->keywordCount(), 0);
}

TEST_F(KeywordTableModelTest, SortsByKeywordAtFirst)
{
    tested->setApp(app);
    EXPECT_EQ(order(), byName);
    tested->sort(int(KeywordColumn::Keyword), Qt::DescendingOrder);
    EXPECT_EQ(order(2), QStringLiteral("retro photo|remove background"));
}

TEST_F(KeywordTableModelTest, SortsNumbersAsNumbersAndMissingOnesLastBothWays)
{
    tested->setApp(app);
    tested->sort(int(KeywordColumn::Popularity), Qt::AscendingOrder);
    EXPECT_EQ(order(3), QStringLiteral("passport photo booth|bildbearbeitung|remove background"));
    EXPECT_TRUE(order().endsWith(QStringLiteral("grain filter|photo journal|polaroid frame")));
    tested->sort(int(KeywordColumn::Popularity), Qt::DescendingOrder);
    EXPECT_EQ(order(2), QStringLiteral("photo editor|film camera filter"));
    EXPECT_TRUE(order().endsWith(QStringLiteral("grain filter|photo journal|polaroid frame")));
}

TEST_F(KeywordTableModelTest, RankedComesBeforeUnrankedAndUnrankedBeforePending)
{
    tested->setApp(app);
    for (const Qt::SortOrder direction : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        tested->sort(int(KeywordColumn::Position), direction);
        EXPECT_TRUE(
            order().endsWith(QStringLiteral("passport photo booth|grain filter|polaroid frame")));
    }
    EXPECT_TRUE(order().startsWith(QStringLiteral("photo editor|remove background")));
}

TEST_F(KeywordTableModelTest, EqualRowsKeepTheirOrderByKeywordAndThenById)
{
    tested->setApp(app);
    store().addTrackedKeyword(app, QStringLiteral("retro photo"), QStringLiteral("GB"));
    store().addTrackedKeyword(app, QStringLiteral("retro photo"), QStringLiteral("CA"));
    settle();
    QList<QUuid> before;
    for (int row = 0; row < tested->rowCount(); ++row)
        before << tested->entryAt(row).row.id;
    tested->sort(int(KeywordColumn::Target), Qt::AscendingOrder);
    tested->sort(int(KeywordColumn::Keyword), Qt::AscendingOrder);
    for (int row = 0; row < tested->rowCount(); ++row)
        EXPECT_EQ(tested->entryAt(row).row.id, before[row]);
}

TEST_F(KeywordTableModelTest, FiltersByStorefront)
{
    tested->setApp(app);
    tested->setStorefront(QStringLiteral("DE"));
    EXPECT_EQ(order(), QStringLiteral("bildbearbeitung"));
    tested->setStorefront(QStringLiteral("FR"));
    EXPECT_EQ(tested->rowCount(), 0);
    EXPECT_EQ(tested->keywordCount(), 11);
    tested->setStorefront(std::nullopt);
    EXPECT_EQ(order(), byName);
}

TEST_F(KeywordTableModelTest, SearchesWithoutCaseAndDiacritics)
{
    tested->setApp(app);
    store().addTrackedKeyword(app, QStringLiteral("Café Crème"), QStringLiteral("FR"));
    settle();
    tested->setSearch(QStringLiteral("  CREME"));
    EXPECT_EQ(order(), QStringLiteral("Café Crème"));
    tested->setSearch(QStringLiteral("phÓto"));
    EXPECT_EQ(tested->rowCount(), 4);
    tested->setSearch(QString());
    EXPECT_EQ(tested->rowCount(), 12);
}

TEST_F(KeywordTableModelTest, AnAddedKeywordIsOneInsertedRow)
{
    tested->setApp(app);
    const QSignalSpy inserted(tested.get(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy reset(tested.get(), &QAbstractItemModel::modelReset);
    store().addTrackedKeyword(app, QStringLiteral("double exposure"), QStringLiteral("US"));
    store().addTrackedKeyword(store().apps().last().id, QStringLiteral("other app"),
                              QStringLiteral("US"));
    settle();
    ASSERT_EQ(inserted.size(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 2);
    EXPECT_EQ(reset.size(), 0);
    EXPECT_EQ(tested->entryAt(2).row.keyword, QStringLiteral("double exposure"));
}

TEST_F(KeywordTableModelTest, ThousandsAddedAtOnceAreFewInsertionsAndNoReset)
{
    tested->setApp(app);
    const QSignalSpy inserted(tested.get(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy reset(tested.get(), &QAbstractItemModel::modelReset);
    QStringList many;
    for (int i = 0; i < 2000; ++i)
        many << QStringLiteral("keyword %1").arg(i);
    store().addTrackedKeywords(app, many, QStringLiteral("US"));
    settle();
    EXPECT_LE(inserted.size(), 2);
    EXPECT_EQ(reset.size(), 0);
    EXPECT_EQ(tested->rowCount(), 2011);
}

TEST_F(KeywordTableModelTest, ThousandsRemovedAtOnceAreFewRemovalsAndNoReset)
{
    tested->setApp(app);
    QStringList many;
    for (int i = 0; i < 2000; ++i)
        many << QStringLiteral("keyword %1").arg(i);
    const KeywordAdmission admission = store().addTrackedKeywords(app, many, QStringLiteral("US"));
    settle();
    const QSignalSpy removed(tested.get(), &QAbstractItemModel::rowsRemoved);
    const QSignalSpy reset(tested.get(), &QAbstractItemModel::modelReset);
    const QSignalSpy counted(tested.get(), &KeywordTableModel::keywordCountChanged);
    const QPersistentModelIndex kept = tested->index(tested->rowOf(admission.kept[1].id), 0);
    QList<QUuid> everySecond;
    for (qsizetype i = 0; i < admission.kept.size(); i += 2)
        everySecond << admission.kept[i].id;
    store().removeKeywords(everySecond);
    settle();
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(reset.size(), 0);
    EXPECT_EQ(counted.size(), 1);
    EXPECT_EQ(tested->rowCount(), 1011);
    EXPECT_EQ(kept.data().toString(), QStringLiteral("keyword 1"));
}

TEST_F(KeywordTableModelTest, SearchingAndFilteringInsertAndRemoveRows)
{
    tested->setApp(app);
    const QSignalSpy reset(tested.get(), &QAbstractItemModel::modelReset);
    const QPersistentModelIndex photo = tested->index(tested->rowOf(idOf("photo editor")), 0);
    tested->setSearch(QStringLiteral("photo"));
    tested->setStorefront(QStringLiteral("US"));
    EXPECT_EQ(photo.data().toString(), QStringLiteral("photo editor"));
    tested->setSearch(QString());
    tested->setStorefront(std::nullopt);
    EXPECT_EQ(photo.data().toString(), QStringLiteral("photo editor"));
    EXPECT_EQ(order(), byName);
    EXPECT_EQ(reset.size(), 0);
}

TEST_F(KeywordTableModelTest, AKeywordThatCameAndWentAtOnceIsNoRow)
{
    tested->setApp(app);
    const TrackedKeyword keyword =
        store().addTrackedKeyword(app, QStringLiteral("brief"), QStringLiteral("US"));
    store().removeKeyword(keyword.id);
    settle();
    EXPECT_EQ(tested->rowCount(), 11);
}

TEST_F(KeywordTableModelTest, AMeasuredKeywordChangesWhereItStands)
{
    tested->setApp(app);
    tested->sort(int(KeywordColumn::Popularity), Qt::DescendingOrder);
    const int row = tested->rowOf(idOf("grain filter"));
    const QSignalSpy changed(tested.get(), &QAbstractItemModel::dataChanged);
    const QSignalSpy moved(tested.get(), &QAbstractItemModel::layoutChanged);
    store().queueKeywordRefreshes({*store().trackedKeyword(idOf("grain filter"))});
    settle();
    // What it measures now, and what that makes of its past.
    ASSERT_FALSE(changed.isEmpty());
    for (const QList<QVariant> &told : changed) {
        EXPECT_EQ(told[0].toModelIndex().row(), row);
        EXPECT_EQ(told[1].toModelIndex().row(), row);
    }
    EXPECT_EQ(moved.size(), 0);
    EXPECT_EQ(tested->entryAt(row).row.popularity, 42);
    EXPECT_FALSE(tested->entryAt(row).row.awaitingMetrics);
    tested->resort();
    EXPECT_EQ(moved.size(), 1);
    EXPECT_LT(tested->rowOf(idOf("grain filter")), row);
}

TEST_F(KeywordTableModelTest, ARemovedKeywordIsOneRemovedRow)
{
    tested->setApp(app);
    const QSignalSpy removed(tested.get(), &QAbstractItemModel::rowsRemoved);
    store().removeKeyword(idOf("photo editor"));
    settle();
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(tested->rowCount(), 10);
    EXPECT_FALSE(order().contains(QStringLiteral("photo editor")));
}

TEST_F(KeywordTableModelTest, ResortingKeepsPersistentIndexesOnTheirKeywords)
{
    tested->setApp(app);
    const QPersistentModelIndex index = tested->index(0, 0);
    tested->sort(int(KeywordColumn::Difficulty), Qt::DescendingOrder);
    EXPECT_EQ(index.data().toString(), QStringLiteral("bildbearbeitung"));
    EXPECT_NE(index.row(), 0);
}

TEST_F(KeywordTableModelTest, SaysWhenAKeywordWasUpdated)
{
    tested->setApp(app);
    tested->setStorefront(QStringLiteral("US"));
    const auto updated = [&](const char *keyword) {
        return updatedText(tested->entryAt(tested->rowOf(idOf(keyword))));
    };
    EXPECT_EQ(updated("photo editor"), QStringLiteral("Updated just now"));
    EXPECT_EQ(updated("collage maker"), QStringLiteral("Updated 4 min. ago"));
    EXPECT_EQ(updated("polaroid frame"), QStringLiteral("Awaiting metrics"));
    world->clock->advance(Seconds(3600));
    EXPECT_EQ(updated("photo editor"), QStringLiteral("Updated 1 hr. ago"));
    tested->setRefreshing(idOf("photo editor"), true);
    EXPECT_EQ(updated("photo editor"), QStringLiteral("Refreshing…"));
}

TEST_F(KeywordTableModelTest, TellsTheStorefrontWhereItIsNotPlain)
{
    tested->setApp(app);
    EXPECT_TRUE(tested->entryAt(0).surroundings->hasSeveralStorefronts);
    const QSignalSpy changed(tested.get(), &QAbstractItemModel::dataChanged);
    store().removeKeyword(idOf("bildbearbeitung"));
    settle();
    EXPECT_FALSE(tested->entryAt(0).surroundings->hasSeveralStorefronts);
    EXPECT_EQ(changed.size(), 1) << "the other rows say less now";
}

TEST_F(KeywordTableModelTest, ReadsEveryRowAsASentence)
{
    tested->setApp(app);
    EXPECT_EQ(
        at(tested->rowOf(idOf("collage maker")), KeywordColumn::Keyword, Qt::AccessibleTextRole)
            .toString(),
        QStringLiteral(
            "collage maker, United States, Updated 4 min. ago, Target: Good "
            "Target, Popularity: 61, Estimated difficulty: 44, Rank 9, up 2, best rank 9 on "
            "Nov 21"));
    EXPECT_EQ(
        at(tested->rowOf(idOf("polaroid frame")), KeywordColumn::Keyword, Qt::AccessibleTextRole)
            .toString(),
        QStringLiteral("polaroid frame, United States, Awaiting metrics"));
}

TEST_F(KeywordTableModelTest, EveryCellHasItsAccessibleText)
{
    tested->setApp(app);
    const int row = tested->rowOf(idOf("passport photo booth"));
    const auto says = [&](KeywordColumn column) {
        return at(row, column, Qt::AccessibleTextRole).toString();
    };
    EXPECT_EQ(says(KeywordColumn::Target), QStringLiteral("Target: Low Volume"));
    EXPECT_EQ(says(KeywordColumn::Popularity), QStringLiteral("Popularity: 14"));
    EXPECT_EQ(says(KeywordColumn::Difficulty), QStringLiteral("Estimated difficulty: 21"));
    EXPECT_EQ(says(KeywordColumn::Position),
              QStringLiteral("Absent from returned search results (up to 100 apps), Left results"));
    EXPECT_EQ(says(KeywordColumn::Apps),
              QStringLiteral("Show ranked apps for passport photo booth in United States"));
    EXPECT_EQ(at(row, KeywordColumn::Popularity, Qt::AccessibleDescriptionRole).toString(),
              QStringLiteral("Popularity. Directional estimate, not an official Apple metric."));
    const int pending = tested->rowOf(idOf("grain filter"));
    EXPECT_EQ(at(pending, KeywordColumn::Position, Qt::AccessibleTextRole).toString(),
              QStringLiteral("Pending"));
    EXPECT_EQ(at(pending, KeywordColumn::Popularity, Qt::AccessibleTextRole).toString(),
              QStringLiteral("Popularity: unavailable"));
    EXPECT_EQ(at(pending, KeywordColumn::Target, Qt::ToolTipRole).toString(),
              QStringLiteral("Refresh to calculate Target. Popularity, search results and a "
                             "supported storefront are required."));
}

TEST_F(KeywordTableModelTest, AFirstObservationIsNoMovement)
{
    tested->setApp(app);
    EXPECT_FALSE(tested->entryAt(tested->rowOf(idOf("film camera filter"))).movement);
    EXPECT_EQ(tested->entryAt(tested->rowOf(idOf("remove background"))).movement,
              RankMovement::declined(4));
}

TEST_F(KeywordTableModelTest, TheHeaderExplainsPopularity)
{
    constexpr int popularity = int(KeywordColumn::Popularity);
    EXPECT_EQ(tested->headerData(popularity, Qt::Horizontal, Qt::DisplayRole).toString(),
              QStringLiteral("Popularity (est.)"));
    EXPECT_TRUE(tested->headerData(popularity, Qt::Horizontal, Qt::ToolTipRole)
                    .toString()
                    .startsWith(QStringLiteral("Estimated search popularity")));
}

} // namespace
} // namespace veltrix
