// SPDX-License-Identifier: GPL-3.0-or-later
// What the keywords page exports and imports.
#include "ui/support/ui_test.h"

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
};

TEST_F(DashboardFilesTest, ExportsTheTableAsItIsShown)
{
    open();
    table().setColumnVisible(KeywordColumn::Apps, false);
    model().setSearch(QStringLiteral("photo"));
    model().sort(int(KeywordColumn::Difficulty), Qt::DescendingOrder);
    page().exportTable();
    EXPECT_EQ(world->files.requests.last().suggestedName,
              QStringLiteral("Lumen Photo Editor keywords.csv"));
    EXPECT_EQ(QString::fromUtf8(world->files.saved),
              QStringLiteral("Keyword,Storefront,Target,Popularity (est.),Difficulty "
                             "(est.),Ranking\r\n"
                             "photo editor,US,Worth Climbing,78,81,37\r\n"
                             "photo journal,US,Refresh required,,35,12\r\n"
                             "retro photo,US,Good Target,48,33,4\r\n"
                             "passport photo booth,US,Low Volume,14,21,Not ranked\r\n"));
    EXPECT_EQ(status(), QStringLiteral("Exported to Lumen Photo Editor keywords.csv."));
}

TEST_F(DashboardFilesTest, ExportsTheWholeHistoryOneLineASnapshot)
{
    open();
    page().exportHistory();
    const QStringList lines = QString::fromUtf8(world->files.saved).split(QStringLiteral("\r\n"));
    EXPECT_EQ(lines.size(), 1 + int(store().snapshots().size()) + 1);
    EXPECT_EQ(lines[0], QStringLiteral("Keyword,Storefront,Measured at,Position,Popularity "
                                       "(est.),Difficulty (est.),Competition,Opportunity,Target,"
                                       "Popularity model,Scoring model"));
    EXPECT_EQ(lines[1], QStringLiteral("bildbearbeitung,DE,2026-11-20T12:00:00.000Z,19,37,47,,62,"
                                       "Supporting,popularity-7,quorvin-opportunity-v1"));
    EXPECT_TRUE(
        lines[2].startsWith(QStringLiteral("bildbearbeitung,DE,2026-11-21T09:50:00.000Z,18,")));
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
}

TEST_F(DashboardFilesTest, ImportsKeywordsWithTheirStorefronts)
{
    open();
    world->client->holds = true;
    world->files.opened = "Keyword,Storefront\nfilm,DE\ngrain,\nPhoto Editor,US\n";
    page().importKeywords();
    EXPECT_EQ(tracked().mid(11),
              (QStringList{QStringLiteral("film@DE"), QStringLiteral("grain@US")}))
        << "and the one that was there already is not added again";
    EXPECT_EQ(status(), QStringLiteral("Keywords saved. Metrics will update in the background."));
}

TEST_F(DashboardFilesTest, AnImportWithoutKeywordsOrThatFailsSaysSo)
{
    open();
    world->files.opened = "\n , \n";
    page().importKeywords();
    EXPECT_EQ(status(), QStringLiteral("The file holds no keywords."));
    world->files.error = QStringLiteral("No permission.");
    page().importKeywords();
    EXPECT_EQ(status(), QStringLiteral("No permission."));
    EXPECT_EQ(tracked().size(), 11);
}

TEST_F(DashboardFilesTest, WhatItExportsItImports)
{
    open();
    page().exportTable();
    PersistedState empty = sampleState(VirtualClock().now(), {});
    const QByteArray exported = world->files.saved;
    empty.trackedKeywords.clear();
    empty.snapshots.clear();
    QStringList before = tracked();
    open(empty);
    world->files.opened = exported;
    page().importKeywords();
    QStringList after = tracked();
    before.sort();
    after.sort();
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace veltrix
