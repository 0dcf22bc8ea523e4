// SPDX-License-Identifier: GPL-3.0-or-later
// What the keywords page exports and imports.
#include "effects/atomic_file.h"
#include "ui/support/ui_test.h"

#include <QClipboard>
#include <QGuiApplication>

namespace veltrix
{
namespace
{

class DashboardFilesTest : public UiTest
{
protected:
    QStringList tracked()
    {
        QStringList keywords;
        for (const TrackedKeyword &keyword : store().trackedKeywords())
            keywords << keyword.keyword + u'@' + keyword.country;
        return keywords;
    }
    void import(const QByteArray &content)
    {
        world->files.opened = content;
        page().importKeywords();
        click("addKeywordsSubmit");
    }
};

TEST_F(DashboardFilesTest, ExportsTheKeywordsThatAreShownForSpreadsheets)
{
    open();
    table().setColumnVisible(KeywordColumn::Apps, false);
    model().setSearch(QStringLiteral("photo"));
    model().sort(int(KeywordColumn::Difficulty), Qt::DescendingOrder);
    page().exportTable();
    EXPECT_EQ(world->files.requests.last().suggestedName,
              QStringLiteral("Lumen Photo Editor keywords.csv"));
    ASSERT_TRUE(world->files.saved.startsWith("\xEF\xBB\xBF"));
    EXPECT_EQ(
        QString::fromUtf8(world->files.saved.sliced(3)),
        QStringLiteral(
            "Keyword,Storefront,App,Measured at (UTC),Ranking,Change,Popularity (est.),"
            "Difficulty (est.),Competition,Opportunity,Target,7 days,30 days,Best,Best on,Tags\r\n"
            "photo editor,US,Lumen Photo Editor,2026-11-21 11:59:48,37,3,78,81,,62,"
            "Worth Climbing,,,37,2026-11-21,\r\n"
            "photo journal,US,Lumen Photo Editor,2026-11-21 09:49:00,12,,,35,,,,,,12,"
            "2026-11-21,\r\n"
            "retro photo,US,Lumen Photo Editor,2026-11-21 11:55:00,4,0,48,33,,62,"
            "Good Target,,,4,2026-11-20,\r\n"
            "passport photo booth,US,Lumen Photo Editor,2026-11-21 11:54:00,Not ranked,"
            "Left results,14,21,,62,Low Volume,,,48,2026-11-20,\r\n"));
    EXPECT_EQ(status(), QStringLiteral("Exported to Lumen Photo Editor keywords.csv."));
}

TEST_F(DashboardFilesTest, WhatIsMissingIsAnEmptyCellAndADeclineANegativeNumber)
{
    open();
    page().exportTable();
    const QString file = QString::fromUtf8(world->files.saved);
    EXPECT_TRUE(
        file.contains(QStringLiteral("\r\ngrain filter,US,Lumen Photo Editor,,,,,,,,,,,,,\r\n")))
        << file.toStdString();
    EXPECT_TRUE(file.contains(QStringLiteral(",21,-4,42,58,,62,Supporting,,,17,2026-11-20,\r\n")));
}

TEST_F(DashboardFilesTest, ExportsAllAppsInOneFile)
{
    open();
    store().addTrackedKeyword(store().apps()[1].id, QStringLiteral("diary"), QStringLiteral("GB"));
    model().setSearch(QStringLiteral("photo"));
    click("moreButton");
    choose("moreMenu", QStringLiteral("Export All Apps…"));
    EXPECT_EQ(world->files.requests.last().suggestedName, QStringLiteral("All apps keywords.csv"));
    const QStringList lines = QString::fromUtf8(world->files.saved).split(QStringLiteral("\r\n"));
    ASSERT_EQ(lines.size(), 1 + 12 + 1) << "whatever the filter hides";
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("bildbearbeitung,DE,Lumen Photo Editor,")));
    EXPECT_EQ(lines[12], QStringLiteral("diary,GB,Tidewater Journal,,,,,,,,,,,,,"));
}

TEST_F(DashboardFilesTest, ACopyStaysTabSeparatedAndAsItIsShown)
{
    open();
    store().addTrackedKeyword(*window->selectedApp(), QStringLiteral("=1+1"), QStringLiteral("US"));
    settle();
    selectKeywords({QStringLiteral("=1+1")});
    press(Qt::Key_C, Qt::ControlModifier);
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith(QStringLiteral("Keyword\tStorefront\t")));
    EXPECT_TRUE(copied.section(u'\n', 1, 1).startsWith(QStringLiteral("=1+1\tUS\t")));
}

TEST_F(DashboardFilesTest, ExportsTheWholeHistoryOneLineASnapshot)
{
    open();
    page().exportHistory();
    const QStringList lines = QString::fromUtf8(world->files.saved).split(QStringLiteral("\r\n"));
    EXPECT_EQ(lines.size(), 1 + int(store().snapshots().size()) + 1);
    EXPECT_EQ(lines[0], QStringLiteral("Keyword,Storefront,Measured at (UTC),Position,Popularity "
                                       "(est.),Difficulty (est.),Competition,Opportunity,Target,"
                                       "Popularity model,Scoring model,Notes,Rank of Rival 1,"
                                       "Rank of Rival 2,Rank of Rival 3,Rank of Rival 4,"
                                       "Rank of Rival 5"));
    EXPECT_EQ(lines[1], QStringLiteral("bildbearbeitung,DE,2026-11-20 12:00:00,19,37,47,,62,"
                                       "Supporting,popularity-7,quorvin-opportunity-v1,,,,,,"));
    EXPECT_TRUE(lines[2].startsWith(QStringLiteral("bildbearbeitung,DE,2026-11-21 09:50:00,18,")));
}

TEST_F(DashboardFilesTest, AnExportOfTheHistoryTellsHowFarItIsAndStopsWithoutAFile)
{
    open();
    world->files.holds = true;
    page().exportHistory();
    EXPECT_EQ(work(), QString()) << "the file is only begun";
    world->files.release();
    EXPECT_EQ(work(), QStringLiteral("Exporting the history · keyword 1 of 11"));
    world->files.release();
    EXPECT_EQ(work(), QStringLiteral("Exporting the history · keyword 2 of 11"));
    // One at a time.
    page().exportHistory();
    EXPECT_EQ(status(), QStringLiteral("Another export is still being written."));
    click("stopButton");
    EXPECT_EQ(work(), QString());
    EXPECT_EQ(status(), QStringLiteral("Export stopped. No file was written."));
    world->files.release();
    EXPECT_TRUE(world->files.saved.isEmpty());
    world->files.holds = false;
    page().exportHistory();
    EXPECT_FALSE(world->files.saved.isEmpty());
    EXPECT_EQ(work(), QString());
}

TEST_F(DashboardFilesTest, StopEndsTheExportAndNotWhatIsMeasuredMeanwhile)
{
    open();
    world->client->holds = true;
    store().queueKeywordRefreshes(store().trackedKeywords());
    const QString measuring = work();
    EXPECT_TRUE(measuring.startsWith(QStringLiteral("Measuring “"))) << qPrintable(measuring);
    world->files.holds = true;
    page().exportHistory();
    world->files.release();
    EXPECT_TRUE(work().startsWith(QStringLiteral("Exporting the history")));
    click("stopButton");
    EXPECT_EQ(work(), measuring);
}

TEST_F(DashboardFilesTest, AHistoryThatCannotBeReadIsToldAndTheRestIsExported)
{
    open();
    const QString history = world->folder.filePath(QStringLiteral("history.sqlite"));
    writeFileAtomically(history, "not a database");
    reopen();
    page().exportHistory();
    waitFor([this] { return !status().isEmpty(); });
    EXPECT_EQ(status(), QStringLiteral("Exported to Lumen Photo Editor history.csv without older "
                                       "measurements. The database “%1” could not be used: file is "
                                       "not a database.")
                            .arg(history));
    const QStringList lines = QString::fromUtf8(world->files.saved).split(QStringLiteral("\r\n"));
    EXPECT_EQ(lines.size(), 1 + int(store().snapshots().size()) + 1);
    EXPECT_EQ(readWholeFile(history), "not a database");
}

TEST_F(DashboardFilesTest, AFailedExportSaysWhyAndACancelledOneNothing)
{
    open();
    world->files.cancels = true;
    page().exportTable();
    EXPECT_EQ(status(), QString());
    world->files.cancels = false;
    world->files.error = QStringLiteral("The disk is full.");
    page().exportTable();
    EXPECT_EQ(status(), QStringLiteral("The disk is full."));
    page().exportHistory();
    EXPECT_EQ(status(), QStringLiteral("The disk is full."));
    EXPECT_EQ(work(), QString());
}

TEST_F(DashboardFilesTest, ImportsKeywordsWithTheirStorefronts)
{
    open();
    world->client->holds = true;
    import("Keyword,Storefront\nfilm,DE\ngrain,\nPhoto Editor,US\n");
    EXPECT_EQ(tracked().mid(11),
              (QStringList{QStringLiteral("film@DE"), QStringLiteral("grain@US")}))
        << "and the one that was there already is not added again";
    EXPECT_EQ(status(), QStringLiteral("Keywords saved. Metrics will update in the background."));
}

TEST_F(DashboardFilesTest, WhatItExportsItImports)
{
    open();
    for (const char *keyword : {"=photo", "-12 filter", "'+1", "-3", "a;b", "say \"cheese\""}) {
        store().addTrackedKeyword(*window->selectedApp(), QString::fromLatin1(keyword),
                                  QStringLiteral("GB"));
    }
    settle();
    page().exportTable();
    PersistedState empty = sampleState(VirtualClock().now(), {});
    const QByteArray exported = world->files.saved;
    empty.trackedKeywords.clear();
    empty.snapshots.clear();
    QStringList before = tracked();
    open(empty);
    import(exported);
    QStringList after = tracked();
    before.sort();
    after.sort();
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace veltrix
