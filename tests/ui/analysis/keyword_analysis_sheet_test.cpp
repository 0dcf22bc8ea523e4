// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/analysis/keyword_analysis_sheet.h"

#include "ui/support/research_test.h"
#include "ui_kit/widgets/card.h"

#include <QAccessible>
#include <QClipboard>
#include <QScrollArea>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class KeywordAnalysisSheetTest : public ResearchTest
{
protected:
    QWidget *openFor(const char *keyword)
    {
        Q_EMIT page().analysisRequested(rivals().row(keyword));
        settle();
        return topSheet();
    }
    QScrollBar *scrollBar()
    {
        return find<QScrollArea>("analysisSheetScroll")->verticalScrollBar();
    }
};

TEST_F(KeywordAnalysisSheetTest, IsTitledWithTheKeywordAndItsStorefront)
{
    QWidget *sheet = openFor("collage maker");
    ASSERT_TRUE(sheet);
    EXPECT_TRUE(shows(sheet, text("Keyword analysis")));
    EXPECT_TRUE(shows(sheet, text("collage maker · United States")));
    EXPECT_EQ(sheet->accessibleName(), text("Keyword analysis"));
}

TEST_F(KeywordAnalysisSheetTest, ShowsEveryTextOfTheContent)
{
    QWidget *sheet = openFor("collage maker");
    const SharedSnapshot newest = store().newestSnapshot(rivals().row("collage maker").id);
    const AnalysisContent content =
        analysisContent(text("collage maker"), text("US"), newest.get());
    QStringList expected{content.observation, content.guidanceTitle, content.guidanceText,
                         content.positionNote};
    for (const AnalysisCard &card : content.cards) {
        expected << card.title << card.scoreText();
        for (const AnalysisItem &item : card.items) {
            if (const auto *plain = std::get_if<AnalysisText>(&item))
                expected << plain->text;
            else if (const auto *factor = std::get_if<AnalysisFactor>(&item))
                expected << factor->name << factor->weight << factor->detail << factor->points;
            else
                expected << std::get<AnalysisEvidence>(item).name
                         << std::get<AnalysisEvidence>(item).value;
        }
    }
    const QStringList shown = textsIn(sheet);
    for (const QString &one : expected)
        EXPECT_TRUE(shown.contains(one)) << one.toStdString();
    EXPECT_GT(expected.size(), 60);
}

TEST_F(KeywordAnalysisSheetTest, FiguresAreReadAsTheirWholeTexts)
{
    QWidget *sheet = openFor("collage maker");
    QStringList names;
    for (const FigureTile *tile : sheet->findChildren<FigureTile *>())
        names << tile->accessibleName();
    EXPECT_EQ(names, (QStringList{text("Position: 9"), text("Search popularity: 61 / 100"),
                                  text("Difficulty · estimate: 44 / 100"),
                                  text("Competition: 66 / 100")}));
    EXPECT_FALSE(find("figureTile4")->toolTip().isEmpty());
    EXPECT_FALSE(find("figureTile4")->accessibleDescription().isEmpty());
}

TEST_F(KeywordAnalysisSheetTest, TheFiguresStandInTwoRowsWhereFourHaveNoRoom)
{
    const SharedSnapshot newest = store().newestSnapshot(rivals().row("collage maker").id);
    KeywordAnalysisContent content(
        analysisContent(text("collage maker"), text("US"), newest.get()));
    const auto tile = [&](int number) {
        return content.findChild<QWidget *>(QStringLiteral("figureTile%1").arg(number));
    };
    content.resize(700, 2000);
    content.show();
    content.grab();
    EXPECT_EQ(tile(1)->y(), tile(4)->y());
    content.resize(420, 3000);
    content.grab();
    EXPECT_LT(tile(1)->y(), tile(4)->y());
    for (int number = 1; number <= 4; ++number) {
        for (const auto *label : tile(number)->findChildren<QLabel *>()) {
            const bool isWhole = label->wordWrap() || label->width() >= label->sizeHint().width();
            EXPECT_TRUE(isWhole || !label->isVisible()) << label->text().toStdString();
        }
    }
}

TEST_F(KeywordAnalysisSheetTest, SourceAndRawValueSayInAToolTipWhatTheyAre)
{
    QWidget *sheet = openFor("collage maker");
    int explained = 0;
    for (const QLabel *label : sheet->findChildren<QLabel *>()) {
        if (label->text().startsWith(text("Source: ")) ||
            label->text().startsWith(text("Saved raw value: "))) {
            EXPECT_FALSE(label->toolTip().isEmpty());
            EXPECT_FALSE(label->accessibleDescription().isEmpty());
            ++explained;
        }
    }
    EXPECT_EQ(explained, 2);
}

TEST_F(KeywordAnalysisSheetTest, AFactorIsReadAsASentence)
{
    QWidget *sheet = openFor("collage maker");
    QStringList names;
    for (const QWidget *widget : find("difficultyCard")->findChildren<QWidget *>())
        names << widget->accessibleName();
    EXPECT_TRUE(names.contains(text("Rating count, 45% weight, 28.4, Average 9,912 ratings · 1 − "
                                    "exp(−average ratings / 10,000)")));
    EXPECT_TRUE(sheet->isVisible());
}

TEST_F(KeywordAnalysisSheetTest, AKeywordWithoutASnapshotHasNothingElse)
{
    QWidget *sheet = openFor("grain filter");
    EXPECT_EQ(emptyTitle("analysisEmpty"), text("No saved analysis"));
    EXPECT_EQ(emptyText("analysisEmpty"),
              text("A successful keyword refresh is needed before a breakdown can be shown."));
    EXPECT_TRUE(sheet->findChildren<Card *>().isEmpty());
}

TEST_F(KeywordAnalysisSheetTest, MakesNoRequest)
{
    openFor("collage maker");
    QTest::qWait(20);
    EXPECT_TRUE(appStore().searches.isEmpty());
    EXPECT_TRUE(appStore().lookups.isEmpty());
}

TEST_F(KeywordAnalysisSheetTest, DoneAndEscapeCloseIt)
{
    openFor("collage maker");
    EXPECT_EQ(window->focusWidget()->objectName(), text("analysisDone"));
    click("analysisDone");
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
    openFor("collage maker");
    press(Qt::Key_Escape);
    EXPECT_FALSE(Overlay::isOpenOver(window.get()));
}

TEST_F(KeywordAnalysisSheetTest, IsCopiedAsTextAndSaysSo)
{
    openFor("collage maker");
    click("analysisCopy");
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith(text("Keyword analysis\ncollage maker · United States\n")));
    EXPECT_TRUE(copied.contains(text("\nPosition: 9\n")));
    EXPECT_TRUE(copied.contains(text("Quorvin competition model · 25 of up to 25 apps.")));
    EXPECT_EQ(find<Button>("analysisCopy")->text(), text("Copied"));
    EXPECT_EQ(find<Button>("analysisCopy")->accessibleName(), text("Copied"));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return find<Button>("analysisCopy")->text() == text("Copy as text"); }, 4000));
}

TEST_F(KeywordAnalysisSheetTest, FollowsANewMeasurementAndStaysInPlace)
{
    openFor("collage maker");
    window->grab();
    scrollBar()->setValue(200);
    rivals().clock->advance(Seconds(secondsPerDay));
    appStore().results = rankedWith(0, 30);
    store().queueKeywordRefreshes({*store().trackedKeyword(rivals().row("collage maker").id)});
    settle();
    window->grab();
    EXPECT_TRUE(shows(topSheet(), text("Not found in returned results")));
    EXPECT_EQ(scrollBar()->value(), 200);
}

TEST_F(KeywordAnalysisSheetTest, EnterInTheTableOpensIt)
{
    selectKeywords({text("collage maker")});
    press(Qt::Key_Return);
    ASSERT_TRUE(topSheet());
    EXPECT_EQ(topSheet()->objectName(), text("analysisSheet"));
}

} // namespace
} // namespace veltrix
