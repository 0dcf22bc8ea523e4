// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_check_model.h"

#include "store/store_fixture.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

AppKeywordCheck check(const char *keyword, int position, int difficulty)
{
    AppKeywordCheck made;
    made.keyword = text(keyword);
    if (position > 0)
        made.position = position;
    if (difficulty >= 0)
        made.difficulty = difficulty;
    return made;
}

class KeywordCheckModelTest : public testing::Test
{
protected:
    void fill()
    {
        model.add(check("film camera", 4, 22));
        model.add(check("Vintage", 2, 18));
        model.add(check("grain", 0, -1));
        model.add(check("analog photo", 31, 61));
    }
    QString order()
    {
        QStringList keywords;
        for (int row = 0; row < model.rowCount(); ++row)
            keywords << model.entryAt(row).check.keyword;
        return keywords.join(text(", "));
    }
    QString cell(int row, CheckColumn column, int role = Qt::DisplayRole)
    {
        return model.index(row, int(column)).data(role).toString();
    }

    KeywordCheckModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(KeywordCheckModelTest, ShowsRanksAndDifficulties)
{
    fill();
    EXPECT_EQ(cell(0, CheckColumn::Rank), text("# 4"));
    EXPECT_EQ(cell(1, CheckColumn::Rank), text("2nd"));
    EXPECT_EQ(cell(2, CheckColumn::Rank), text("Not ranked"));
    EXPECT_EQ(cell(0, CheckColumn::Difficulty), text("22"));
    EXPECT_EQ(cell(2, CheckColumn::Difficulty), QString());
}

TEST_F(KeywordCheckModelTest, HeadersAreNamed)
{
    QStringList headers;
    for (int column = 0; column < int(checkColumns().size()); ++column)
        headers << model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    EXPECT_EQ(headers, (QStringList{QString(), text("Keyword"), text("Rank"), text("Your rank"),
                                    text("Diff")}));
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::AccessibleTextRole).toString(),
              text("Chosen"));
}

TEST_F(KeywordCheckModelTest, EveryCellIsReadable)
{
    AppKeywordCheck ranked = check("film camera", 4, 22);
    ranked.ownPosition = 12;
    model.add(ranked);
    model.add(check("grain", 0, -1));
    EXPECT_EQ(cell(0, CheckColumn::Chosen, Qt::AccessibleTextRole), text("Not chosen"));
    EXPECT_EQ(cell(0, CheckColumn::Rank, Qt::AccessibleTextRole), text("Rank 4"));
    EXPECT_EQ(cell(0, CheckColumn::OwnRank, Qt::AccessibleTextRole), text("your app ranks 12"));
    EXPECT_EQ(cell(1, CheckColumn::OwnRank, Qt::AccessibleTextRole),
              text("your app is not ranked"));
    EXPECT_EQ(cell(0, CheckColumn::Difficulty, Qt::AccessibleTextRole),
              text("Estimated difficulty: 22"));
    EXPECT_EQ(cell(1, CheckColumn::Rank, Qt::AccessibleTextRole),
              text("Absent from returned search results (up to 100 apps)"));
    EXPECT_EQ(cell(1, CheckColumn::Difficulty, Qt::AccessibleTextRole),
              text("Estimated difficulty: unavailable"));
}

TEST_F(KeywordCheckModelTest, TheOwnRankIsAColumnThatIsSortedAndCopied)
{
    fill();
    QList<AppKeywordCheck> checks{check("film camera", 4, 22), check("Vintage", 2, 18),
                                  check("grain", 0, -1), check("analog photo", 31, 61)};
    checks[1].ownPosition = 17;
    checks[2].ownPosition = 3;
    model.setChosen(2, true);
    model.setChecks(checks);
    EXPECT_EQ(cell(0, CheckColumn::OwnRank), text("Not ranked"));
    EXPECT_EQ(cell(1, CheckColumn::OwnRank), text("# 17"));
    EXPECT_EQ(cell(2, CheckColumn::OwnRank), text("3rd"));
    model.sort(int(CheckColumn::OwnRank));
    EXPECT_EQ(order(), text("grain, Vintage, film camera, analog photo"));
    EXPECT_EQ(model.chosen(), QStringList{text("grain")}) << "what was chosen stays chosen";
    EXPECT_EQ(
        model.texts({0}, {1, int(CheckColumn::OwnRank)}),
        (QList<QStringList>{{text("Keyword"), text("Your rank")}, {text("grain"), text("3rd")}}));
    checks[0].ownPosition = 1;
    model.setChecks(checks);
    EXPECT_EQ(order(), text("film camera, grain, Vintage, analog photo")) << "still in order";
}

TEST_F(KeywordCheckModelTest, SortsByEachColumnAndBackToTheListing)
{
    fill();
    model.sort(int(CheckColumn::Keyword));
    EXPECT_EQ(order(), text("analog photo, film camera, grain, Vintage"));
    model.sort(int(CheckColumn::Keyword), Qt::DescendingOrder);
    EXPECT_EQ(order(), text("Vintage, grain, film camera, analog photo"));
    model.sort(int(CheckColumn::Rank));
    EXPECT_EQ(order(), text("Vintage, film camera, analog photo, grain"));
    model.sort(-1);
    EXPECT_EQ(order(), text("film camera, Vintage, grain, analog photo"));
}

TEST_F(KeywordCheckModelTest, WhatIsMissingComesLastInEitherOrder)
{
    fill();
    model.sort(int(CheckColumn::Rank), Qt::DescendingOrder);
    EXPECT_EQ(order(), text("analog photo, film camera, Vintage, grain"));
    model.sort(int(CheckColumn::Difficulty), Qt::DescendingOrder);
    EXPECT_EQ(order(), text("analog photo, film camera, Vintage, grain"));
    model.sort(int(CheckColumn::Difficulty));
    EXPECT_EQ(order(), text("Vintage, film camera, analog photo, grain"));
}

TEST_F(KeywordCheckModelTest, ANewRowGoesWhereItBelongs)
{
    model.sort(int(CheckColumn::Rank));
    fill();
    EXPECT_EQ(order(), text("Vintage, film camera, analog photo, grain"));
}

TEST_F(KeywordCheckModelTest, IndexesStayWithTheirRowsWhenSorted)
{
    fill();
    const QPersistentModelIndex grain = model.index(2, int(CheckColumn::Keyword));
    model.sort(int(CheckColumn::Rank));
    EXPECT_EQ(grain.data().toString(), text("grain"));
    EXPECT_EQ(grain.row(), 3);
}

TEST_F(KeywordCheckModelTest, ChosenTextsComeInTheOrderOfTheListing)
{
    fill();
    QSignalSpy changes(&model, &KeywordCheckModel::chosenChanged);
    model.sort(int(CheckColumn::Keyword), Qt::DescendingOrder);
    model.toggle(0);
    model.toggle(2);
    EXPECT_EQ(model.chosen(), (QStringList{text("film camera"), text("Vintage")}));
    EXPECT_EQ(changes.size(), 2);
    model.toggle(0);
    EXPECT_EQ(model.chosen(), QStringList{text("film camera")});
}

TEST_F(KeywordCheckModelTest, AreChosenThroughTheCheckBoxRole)
{
    fill();
    const QModelIndex box = model.index(1, int(CheckColumn::Chosen));
    EXPECT_TRUE(box.flags() & Qt::ItemIsUserCheckable);
    EXPECT_TRUE(model.setData(box, Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(box.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    EXPECT_EQ(model.chosen(), QStringList{text("Vintage")});
}

TEST_F(KeywordCheckModelTest, WhatIsTrackedCannotBeChosen)
{
    fill();
    model.toggle(1);
    model.setTracked({text("vintage"), text("unrelated")});
    EXPECT_TRUE(model.entryAt(1).isTracked);
    EXPECT_TRUE(model.chosen().isEmpty());
    model.toggle(1);
    EXPECT_TRUE(model.chosen().isEmpty());
    EXPECT_FALSE(model.setData(model.index(1, 0), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(cell(1, CheckColumn::Chosen, Qt::AccessibleTextRole), text("Already tracking"));
    model.chooseAll();
    EXPECT_EQ(model.chosen().size(), 3);
}

TEST_F(KeywordCheckModelTest, ARowThatArrivesLaterIsKnownToBeTracked)
{
    model.setTracked({text("grain")});
    fill();
    EXPECT_TRUE(model.entryAt(2).isTracked);
    EXPECT_FALSE(model.entryAt(0).isTracked);
}

TEST_F(KeywordCheckModelTest, ClearsToNothing)
{
    fill();
    model.clear();
    EXPECT_EQ(model.rowCount(), 0);
    fill();
    EXPECT_EQ(order(), text("film camera, Vintage, grain, analog photo"));
}

TEST_F(KeywordCheckModelTest, IsATableOfText)
{
    fill();
    const QList<QStringList> table = model.texts({0, 1, 2}, {0, 1, 2, 3, 4});
    EXPECT_EQ(table[0],
              (QStringList{text("Keyword"), text("Rank"), text("Your rank"), text("Diff")}));
    EXPECT_EQ(table[3],
              (QStringList{text("grain"), text("Not ranked"), text("Not ranked"), QString()}));
}

RC_GTEST_FIXTURE_PROP(KeywordCheckModelTest, InsertingInOrderIsTheSameAsSortingAfterwards, ())
{
    const auto ranks = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 30));
    const int column = *rc::gen::inRange(-1, int(checkColumns().size()));
    const auto direction = *rc::gen::element(Qt::AscendingOrder, Qt::DescendingOrder);
    KeywordCheckModel inserted;
    KeywordCheckModel sorted;
    inserted.sort(column, direction);
    for (size_t i = 0; i < ranks.size(); ++i) {
        const AppKeywordCheck one =
            check(qPrintable(QStringLiteral("k%1").arg(ranks[i] % 7)), ranks[i], 29 - ranks[i]);
        inserted.add(one);
        sorted.add(one);
    }
    sorted.sort(column, direction);
    for (int row = 0; row < sorted.rowCount(); ++row)
        RC_ASSERT(inserted.entryAt(row).order == sorted.entryAt(row).order);
}

} // namespace
} // namespace veltrix
