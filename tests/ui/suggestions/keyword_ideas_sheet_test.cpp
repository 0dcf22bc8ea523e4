// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/keyword_ideas_sheet.h"

#include "ui/suggestions/idea_row.h"
#include "ui/support/research_test.h"

namespace veltrix
{
namespace
{

class KeywordIdeasSheetTest : public ResearchTest
{
protected:
    void openIdeas()
    {
        window->showWorkspace(Workspace::Competitors);
        settle();
        click("keywordIdeas");
        settle();
    }
    QStringList shown()
    {
        QStringList phrases;
        for (const IdeaRow *row : window->findChildren<IdeaRow *>()) {
            if (row->isVisible())
                phrases << row->idea().phrase;
        }
        return phrases;
    }
    /// A listing for each competitor.
    void listAll()
    {
        for (const TrackedCompetitor &competitor : store().competitorsOfApp(appId())) {
            ITunesAppResult app = foxglove();
            app.trackId = competitor.trackId;
            app.trackName = competitor.name;
            appStore().apps.insert(competitor.trackId, app);
        }
    }
    QString label(const char *name) { return find<QLabel>(name)->text(); }
};

TEST_F(KeywordIdeasSheetTest, ShowsWhatIsKnownWithoutARequestAndReadsTheRestWhenAsked)
{
    listAll();
    openIdeas();
    EXPECT_EQ(topSheet()->accessibleName(), text("Keyword ideas"));
    EXPECT_TRUE(appStore().lookups.isEmpty() && appStore().searches.isEmpty());
    EXPECT_TRUE(shown().contains(text("dovetail cam"))) << "names are known";
    EXPECT_EQ(label("ideasProgress"), text("Only the name is known of 5 of 5 competitors."));
    click("ideasRead");
    settle();
    EXPECT_EQ(appStore().lookups.size(), 5);
    EXPECT_FALSE(isShown("ideasRead"));
    EXPECT_EQ(shown().first(), text("vintage analog")) << "five subtitles have it";
    EXPECT_EQ(window->findChild<IdeaRow *>(text("idea1"))->accessibleName(),
              text("vintage analog, United States, In the subtitle of Grainy and 4 more"));
}

TEST_F(KeywordIdeasSheetTest, OneIsTrackedByItsButtonAndTheSelectedOnesTogether)
{
    listAll();
    openIdeas();
    click("ideasRead");
    settle();
    appStore().holds = true;
    const qsizetype before = store().trackedKeywords().size();
    const QStringList ideas = shown();
    window->findChild<IdeaRow *>(text("idea1"))
        ->findChild<QAbstractButton *>(text("ideaTrack"))
        ->click();
    EXPECT_EQ(store().trackedKeywords().last().keyword, ideas[0]);
    EXPECT_EQ(shown().first(), ideas[1]) << "what is tracked is no idea any more";
    EXPECT_TRUE(label("ideasOutcome").startsWith(text("Keywords saved.")));
    EXPECT_FALSE(find("ideasTrack")->isEnabled());
    click("idea1");
    click("idea3");
    EXPECT_EQ(find<Button>("ideasTrack")->text(), text("Track 2 selected"));
    click("ideasTrack");
    EXPECT_EQ(store().trackedKeywords().size(), before + 3);
    EXPECT_FALSE(find("ideasTrack")->isEnabled());
    EXPECT_FALSE(shown().contains(ideas[3]));
}

TEST_F(KeywordIdeasSheetTest, ReadingThatFailsSaysWhyAndKeepsWhatWasRead)
{
    listAll();
    openIdeas();
    int asked = 0;
    appStore().fails = [&asked](const QString &) {
        return ++asked > 2;
    };
    click("ideasRead");
    settle();
    EXPECT_TRUE(isShown("ideasFailure"));
    EXPECT_EQ(find<Banner>("ideasFailure")->message(), text("The network is down."));
    EXPECT_TRUE(shown().contains(text("vintage analog")));
    EXPECT_EQ(label("ideasProgress"), text("Only the name is known of 3 of 5 competitors."));
    appStore().fails = {};
    Q_EMIT find<Banner>("ideasFailure")->actionTriggered();
    settle();
    EXPECT_FALSE(isShown("ideasFailure"));
    EXPECT_FALSE(isShown("ideasRead"));
}

TEST_F(KeywordIdeasSheetTest, ACompetitorThatIsGoneDoesNotKeepTheOthersAway)
{
    listAll();
    appStore().apps.remove(store().competitorsOfApp(appId()).first().trackId);
    openIdeas();
    click("ideasRead");
    settle();
    EXPECT_FALSE(isShown("ideasFailure"));
    EXPECT_FALSE(isShown("ideasRead"));
    EXPECT_TRUE(shown().contains(text("vintage analog")));
}

TEST_F(KeywordIdeasSheetTest, ReadingIsToldAndCanBeStopped)
{
    listAll();
    openIdeas();
    appStore().holds = true;
    click("ideasRead");
    EXPECT_EQ(label("ideasProgress"), text("Reading the listing of Grainy · 1 of 5"));
    EXPECT_EQ(find<Button>("ideasRead")->text(), text("Stop"));
    click("ideasRead");
    EXPECT_EQ(appStore().inFlight, 0);
    EXPECT_EQ(find<Button>("ideasRead")->text(), text("Read 5 listings"));
    click("ideasRead");
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(appStore().inFlight, 0) << "nor does it outlive the sheet";
}

TEST_F(KeywordIdeasSheetTest, ListingsOfKeptSearchesAreKnownWithoutARequest)
{
    QList<ITunesAppResult> results = rankedApps(3);
    ITunesAppResult app = foxglove();
    app.trackId = store().competitorsOfApp(appId()).first().trackId;
    results.append(app);
    rivals().saved->saved.results = results;
    openIdeas();
    EXPECT_TRUE(appStore().lookups.isEmpty());
    EXPECT_TRUE(shown().contains(text("vintage analog")));
    EXPECT_EQ(label("ideasProgress"), text("Only the name is known of 4 of 5 competitors."));
}

TEST_F(KeywordIdeasSheetTest, ArrowsMoveAmongTheIdeas)
{
    openIdeas();
    find("idea1")->setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), text("idea2"));
    press(Qt::Key_Space);
    EXPECT_TRUE(find<QAbstractButton>("idea2")->isChecked());
}

TEST_F(KeywordIdeasSheetTest, AnAppWithoutCompetitorsHasNoButtonForThem)
{
    window->selectApp(store().apps()[1].id);
    window->showWorkspace(Workspace::Competitors);
    settle();
    EXPECT_FALSE(isShown("keywordIdeas"));
}

} // namespace
} // namespace veltrix
