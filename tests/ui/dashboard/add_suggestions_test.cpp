// SPDX-License-Identifier: GPL-3.0-or-later
// Suggestions in the add popover.
#include "ui/support/ui_test.h"

#include "ui/dashboard/add_keywords.h"
#include "ui/suggestions/typed_suggestions.h"
#include "ui_kit/widgets/tag_field.h"
#include "ui_kit/widgets/text_area.h"

#include <QClipboard>
#include <QGuiApplication>

namespace veltrix
{
namespace
{

class AddSuggestionsTest : public UiTest
{
protected:
    void openCard()
    {
        open();
        world->client->holds = true;
        world->suggestions->terms[QStringLiteral("photo ca")] = {
            QStringLiteral("photo calendar"), QStringLiteral("photo card maker"),
            QStringLiteral("photo editor"), QStringLiteral("photo cartoon")};
        settle();
        press(Qt::Key_N, Qt::ControlModifier);
    }
    void typeKeys(const QString &text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void pause() { world->clock->advance(TypedSuggestions::typingPause); }
    QString fieldText() { return find<TextArea>("keywordInput")->toPlainText(); }
    QString line() { return find<QLabel>("suggestionsLine")->text(); }
    QString focused() { return QApplication::focusWidget()->objectName(); }
};

TEST_F(AddSuggestionsTest, TheLineWithTheCaretIsSuggestedForAndReplacedByTheKeyboard)
{
    openCard();
    typeKeys(QStringLiteral("disposable camera"));
    press(Qt::Key_Return);
    typeKeys(QStringLiteral("photo ca"));
    EXPECT_FALSE(isShown("suggestion1"));
    pause();
    EXPECT_EQ(world->suggestions->asked, QStringList{QStringLiteral("photo ca/US")});
    EXPECT_EQ(line(), QStringLiteral("Suggestions for “photo ca”"));
    EXPECT_EQ(find("suggestionsLine")->accessibleName(),
              QStringLiteral("4 suggestions for “photo ca”"));
    EXPECT_EQ(find("suggestion1")->accessibleName(),
              QStringLiteral("photo calendar, suggestion 1 of 4"));
    EXPECT_EQ(find("suggestion3")->accessibleName(),
              QStringLiteral("photo editor, suggestion 3 of 4, tracked"));
    EXPECT_FALSE(find("suggestion3")->isEnabled());
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("suggestion1"));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("suggestion4")) << "a tracked one is passed over";
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), QStringLiteral("suggestion2"));
    press(Qt::Key_Return);
    EXPECT_EQ(fieldText(), QStringLiteral("disposable camera\nphoto card maker"));
    EXPECT_EQ(focused(), QStringLiteral("keywordInput"));
    EXPECT_FALSE(isShown("suggestionPanel"));
    pause();
    EXPECT_EQ(world->suggestions->asked.size(), 1);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(fieldText(), QStringLiteral("disposable camera\nphoto ca")) << "it can be undone";
}

TEST_F(AddSuggestionsTest, EscapeReturnsToTheFieldAndASecondOneCloses)
{
    openCard();
    typeKeys(QStringLiteral("photo ca"));
    pause();
    press(Qt::Key_Down);
    press(Qt::Key_Escape);
    EXPECT_EQ(focused(), QStringLiteral("keywordInput"));
    ASSERT_TRUE(isShown("addKeywordsCard"));
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), QStringLiteral("keywordInput")) << "up from the first leads back, too";
    press(Qt::Key_Escape);
    EXPECT_FALSE(isShown("addKeywordsCard"));
}

TEST_F(AddSuggestionsTest, DownInsideTheTextStaysInTheText)
{
    openCard();
    typeKeys(QStringLiteral("photo ca"));
    press(Qt::Key_Return);
    typeKeys(QStringLiteral("film"));
    press(Qt::Key_Up);
    pause();
    EXPECT_TRUE(isShown("suggestion1")) << "for the line that the caret has moved to";
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("keywordInput"));
}

TEST_F(AddSuggestionsTest, APressReplacesTheKeywordBetweenCommas)
{
    openCard();
    typeKeys(QStringLiteral("film, photo ca, grain"));
    QTextCursor cursor = find<TextArea>("keywordInput")->textCursor();
    cursor.setPosition(14);
    find<TextArea>("keywordInput")->setTextCursor(cursor);
    pause();
    click("suggestion1");
    EXPECT_EQ(fieldText(), QStringLiteral("film, photo calendar, grain"));
}

TEST_F(AddSuggestionsTest, NoneAndNoAnswerAreOneQuietLine)
{
    openCard();
    typeKeys(QStringLiteral("photo c"));
    pause();
    EXPECT_EQ(line(), QStringLiteral("No suggestions for “photo c”"));
    world->suggestions->fails = true;
    typeKeys(QStringLiteral("a"));
    pause();
    EXPECT_EQ(line(), QStringLiteral("Suggestions couldn't be loaded."));
    EXPECT_EQ(status(), QString());
    EXPECT_EQ(find<Button>("addKeywordsSubmit")->text(), QStringLiteral("Add 1 keyword"))
        << "adding is not held up";
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("keywordInput"));
}

TEST_F(AddSuggestionsTest, WhatOneStorefrontLacksCanBeChosenAndTheFirstCheckedIsAsked)
{
    openCard();
    typeKeys(QStringLiteral("photo ca"));
    pause();
    EXPECT_FALSE(find("suggestion3")->isEnabled());
    type("storefrontChecklistSearch", QStringLiteral("germany"));
    press(Qt::Key_Return);
    pause();
    EXPECT_TRUE(find("suggestion3")->isEnabled());
    EXPECT_EQ(world->suggestions->asked.size(), 1) << "the first storefront is the same";
    type("storefrontChecklistSearch", QStringLiteral("united states"));
    press(Qt::Key_Return);
    pause();
    EXPECT_EQ(world->suggestions->asked.last(), QStringLiteral("photo ca/DE"));
}

TEST_F(AddSuggestionsTest, APopoverThatIsClosedWhileItAsksLeavesNothingBehind)
{
    openCard();
    world->suggestions->holds = true;
    typeKeys(QStringLiteral("photo ca"));
    pause();
    EXPECT_EQ(line(), QStringLiteral("Suggestions for “photo ca”…"));
    press(Qt::Key_Escape);
    settle();
    EXPECT_EQ(world->suggestions->inFlight, 0);
    world->suggestions->release();
}

TEST_F(AddSuggestionsTest, TwoThousandPastedLinesAskForTheLastAlone)
{
    openCard();
    QStringList lines;
    for (int i = 0; i < 2000; ++i)
        lines << QStringLiteral("keyword number %1").arg(i);
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
    press(Qt::Key_V, Qt::ControlModifier);
    pause();
    EXPECT_EQ(world->suggestions->asked, QStringList{QStringLiteral("keyword number 1999/US")});
    EXPECT_EQ(find<Button>("addKeywordsSubmit")->text(), QStringLiteral("Add 2,000 keywords"));
}

TEST_F(AddSuggestionsTest, TextsFromRightToLeftAndOfIdeographsAreTakenWhole)
{
    openCard();
    world->suggestions->terms[QStringLiteral("写")] = {QStringLiteral("写真加工")};
    world->suggestions->terms[QStringLiteral("תמ")] = {QStringLiteral("תמונה רטרו")};
    find<TextArea>("keywordInput")->insertPlainText(QStringLiteral("写"));
    pause();
    click("suggestion1");
    find<TextArea>("keywordInput")->insertPlainText(QStringLiteral("\nתמ"));
    pause();
    click("suggestion1");
    EXPECT_EQ(fieldText(), QStringLiteral("写真加工\nתמונה רטרו"));
}

TEST_F(AddSuggestionsTest, TagsAreEndedByCommaOrEnterAndGoToWhatIsAdded)
{
    openCard();
    typeKeys(QStringLiteral("film, photo editor"));
    find("addKeywordsTagsLine")->setFocus();
    typeKeys(QStringLiteral("core,Autumn"));
    press(Qt::Key_Return);
    typeKeys(QStringLiteral("CORE,spare,"));
    press(Qt::Key_Backspace);
    EXPECT_EQ(find<TagField>("addKeywordsTags")->tags(),
              (QStringList{QStringLiteral("core"), QStringLiteral("Autumn")}));
    EXPECT_EQ(find("addKeywordsTagsChip0")->accessibleName(), QStringLiteral("core, remove"));
    EXPECT_EQ(find<QLabel>("addKeywordsNote")->text(),
              QStringLiteral("2 keywords: 1 will be added, 1 is tracked already\n"
                             "Tags go to the keywords that are added."));
    typeKeys(QStringLiteral("late"));
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_FALSE(isShown("addKeywordsCard"));
    QStringList tagged;
    for (const TrackedKeyword &keyword : store().trackedKeywords()) {
        if (const QStringList tags = store().tags(keyword.id); !tags.isEmpty())
            tagged << keyword.keyword + u':' + tags.join(u'+');
    }
    EXPECT_EQ(tagged, QStringList{QStringLiteral("film:Autumn+core+late")})
        << "what is still being typed counts, and what was there keeps its tags";
}

TEST_F(AddSuggestionsTest, ANameThatNoTagCanHaveIsToldWhereItStandsAndNothingIsAdded)
{
    openCard();
    typeKeys(QStringLiteral("film"));
    find("addKeywordsTagsLine")->setFocus();
    typeKeys(QString(41, u'x'));
    const qsizetype before = store().trackedKeywords().size();
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(isShown("addKeywordsCard"));
    EXPECT_EQ(store().trackedKeywords().size(), before);
    EXPECT_EQ(find<QLabel>("addKeywordsNote")->text(),
              QStringLiteral("The name of a tag has 40 characters at most."));
    EXPECT_EQ(focused(), QStringLiteral("addKeywordsTagsLine"));
    press(Qt::Key_Backspace);
    press(Qt::Key_Return);
    find("addKeywordsTagsChip0")->setFocus();
    press(Qt::Key_Delete);
    EXPECT_TRUE(find<TagField>("addKeywordsTags")->tags().isEmpty());
}

TEST_F(AddSuggestionsTest, TheFirstPopoverHasNoEmptyStripBelowItsHint)
{
    openCard();
    settle();
    const auto bottomOf = [this](const char *name) {
        const auto *widget = find(name);
        return widget->mapTo(window.get(), QPoint(0, widget->height())).y();
    };
    const int page = bottomOf("addKeywordsScroll");
    EXPECT_NEAR(bottomOf("addKeywordsTags"), page, 12);
    const int tags = find("addKeywordsTags")->mapTo(window.get(), QPoint()).y();
    EXPECT_NEAR(bottomOf("storefrontChecklist"), tags, 16);
    EXPECT_NEAR(bottomOf("addKeywordsNote"), tags, 16);
}

} // namespace
} // namespace veltrix
