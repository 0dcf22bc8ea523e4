// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/analysis/keyword_suggestions_sheet.h"

#include "ui/suggestions/suggestion_list.h"
#include "ui/support/research_test.h"
#include "ui_kit/widgets/empty_state.h"

namespace veltrix
{
namespace
{

class KeywordSuggestionsSheetTest : public ResearchTest
{
protected:
    QWidget *openAnalysis()
    {
        Q_EMIT page().analysisRequested(rivals().row("collage maker"));
        settle();
        return topSheet();
    }
    QWidget *openSuggestions()
    {
        openAnalysis();
        click("analysisSuggestions");
        settle();
        return topSheet();
    }
    void suggest(const QStringList &terms)
    {
        world->suggestions->terms[text("collage maker")] = terms;
    }
};

TEST_F(KeywordSuggestionsSheetTest, OpensFromTheAnalysisWhichAsksForNothingItself)
{
    openAnalysis();
    EXPECT_TRUE(world->suggestions->asked.isEmpty());
    EXPECT_EQ(find("analysisSuggestions")->accessibleName(), text("Suggestions for collage maker"));
    click("analysisSuggestions");
    settle();
    EXPECT_EQ(topSheet()->accessibleName(), text("Suggestions"));
    EXPECT_EQ(world->suggestions->asked, QStringList{text("collage maker/US")});
}

TEST_F(KeywordSuggestionsSheetTest, AClickTracksASuggestionForTheSameApp)
{
    suggest({text("collage maker"), text("collage maker free"), text("photo editor")});
    openSuggestions();
    EXPECT_EQ(find("suggestion1")->accessibleName(), text("collage maker free, suggestion 1 of 2"));
    EXPECT_EQ(find("suggestion2")->accessibleName(),
              text("photo editor, suggestion 2 of 2, tracked"));
    appStore().holds = true;
    click("suggestion1");
    const TrackedKeyword added = store().trackedKeywords().last();
    EXPECT_EQ(added.keyword, text("collage maker free"));
    EXPECT_EQ(added.country, text("US"));
    EXPECT_EQ(added.appId, store().apps().first().id);
    EXPECT_FALSE(find("suggestion1")->isEnabled());
    EXPECT_EQ(find<QLabel>("suggestionsOutcome")->text().section(u'\n', 0, 0),
              text("Keywords saved. Metrics will update in the background."));
    EXPECT_FALSE(store().refreshProgress().isIdle());
}

TEST_F(KeywordSuggestionsSheetTest, SaysThatItLoadsThatThereAreNoneAndThatItFailed)
{
    world->suggestions->holds = true;
    openSuggestions();
    auto *message = find<EmptyState>("suggestionsMessage");
    EXPECT_EQ(message->content().title, text("Loading suggestions…"));
    world->suggestions->fails = true;
    world->suggestions->release();
    EXPECT_EQ(message->content().title, text("Suggestions couldn't be loaded."));
    EXPECT_EQ(message->content().text,
              text("The service gave no answer, or the requests of the day are used up."));
    world->suggestions->holds = world->suggestions->fails = false;
    Q_EMIT message->actionTriggered();
    EXPECT_EQ(message->content().title, text("No suggestions for “collage maker”"));
}

TEST_F(KeywordSuggestionsSheetTest, ASheetThatIsClosedWhileItLoadsLeavesNothingBehind)
{
    world->suggestions->holds = true;
    openSuggestions();
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(world->suggestions->inFlight, 0);
    EXPECT_EQ(topSheet()->accessibleName(), text("Keyword analysis"));
}

} // namespace
} // namespace veltrix
