// SPDX-License-Identifier: GPL-3.0-or-later
// Undoing removals in the window.
#include "ui/shell/removals.h"
#include "ui/support/ui_test.h"

namespace veltrix
{
namespace
{

class UndoTest : public UiTest
{
protected:
    UndoTest() { open(); }

    void removeKeywords(const QStringList &keywords)
    {
        selectKeywords(keywords);
        press(Qt::Key_Delete);
        click("confirmAccept");
        settle();
    }
    QString offer()
    {
        return isShown("undoButton") ? find("statusOffer")->accessibleName() : QString();
    }
};

TEST_F(UndoTest, ARemovalCanBeUndoneByMouse)
{
    const QStringList before = shownKeywords();
    removeKeywords({QStringLiteral("collage maker"), QStringLiteral("photo editor")});
    EXPECT_EQ(offer(), QStringLiteral("Removed 2 keywords"));
    EXPECT_EQ(shownKeywords().size(), before.size() - 2);
    click("undoButton");
    settle();
    EXPECT_EQ(shownKeywords(), before);
    EXPECT_EQ(offer(), QString());
    EXPECT_EQ(status(), QStringLiteral("Restored 2 keywords"));
}

TEST_F(UndoTest, TheOfferStandsForTenSecondsAndCtrlZGoesOn)
{
    const QStringList before = shownKeywords();
    removeKeywords({QStringLiteral("collage maker")});
    EXPECT_EQ(offer(), QStringLiteral("Removed “collage maker”"));
    world->clock->advance(Seconds(10));
    EXPECT_EQ(offer(), QString());
    removeKeywords({QStringLiteral("photo editor")});
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(shownKeywords(), before);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shownKeywords(), before);
}

TEST_F(UndoTest, CtrlZInATextFieldIsTheFields)
{
    removeKeywords({QStringLiteral("collage maker")});
    auto *search = find<TextField>("keywordSearch");
    search->setFocus();
    QTest::keyClicks(search, QStringLiteral("photo"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(search->text(), QString());
    EXPECT_EQ(offer(), QStringLiteral("Removed “collage maker”"));
}

TEST_F(UndoTest, CtrlZUnderASheetUndoesNothing)
{
    removeKeywords({QStringLiteral("collage maker")});
    window->openSettings();
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(offer(), QStringLiteral("Removed “collage maker”"));
}

TEST_F(UndoTest, UndoIsReachedAndPressedByKeyboardAndTheFocusGoesBackToTheTable)
{
    removeKeywords({QStringLiteral("collage maker")});
    table().setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 30 && QApplication::focusWidget() != find("undoButton"); ++i)
        press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), find("undoButton"));
    press(Qt::Key_Space);
    settle();
    EXPECT_TRUE(shownKeywords().contains(QStringLiteral("collage maker")));
    EXPECT_EQ(QApplication::focusWidget(), &table());
}

TEST_F(UndoTest, TheFocusGoesBackToTheTableWhenTheOfferEnds)
{
    removeKeywords({QStringLiteral("collage maker")});
    find("undoButton")->setFocus(Qt::TabFocusReason);
    world->clock->advance(Seconds(10));
    EXPECT_EQ(QApplication::focusWidget(), &table());
}

TEST_F(UndoTest, AnAppComesBackAsTheSelectedOne)
{
    const QUuid app = *window->selectedApp();
    const QStringList before = shownKeywords();
    store().removeApp(app);
    settle();
    EXPECT_NE(window->selectedApp(), app);
    press(Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(window->selectedApp(), app);
    EXPECT_EQ(shownKeywords(), before);
}

TEST_F(UndoTest, TheConfirmationStaysAsItWas)
{
    selectKeywords({QStringLiteral("collage maker")});
    press(Qt::Key_Delete);
    EXPECT_EQ(find<TextLabel>("confirmMessage")->text(),
              QStringLiteral("This will delete collage maker and its saved ranking snapshot "
                             "history.\nThis action cannot be undone."));
}

TEST_F(UndoTest, ClosingWithinTheTenSecondsKeepsTheRemoval)
{
    removeKeywords({QStringLiteral("collage maker")});
    reopen();
    EXPECT_FALSE(shownKeywords().contains(QStringLiteral("collage maker")));
    EXPECT_EQ(offer(), QString());
}

TEST_F(UndoTest, TheStatusBarTakesNoRoomWhileItIsEmpty)
{
    const int without = table().height();
    EXPECT_FALSE(isShown("statusBar"));
    removeKeywords({QStringLiteral("collage maker")});
    EXPECT_TRUE(isShown("statusBar"));
    settle();
    EXPECT_LT(table().height(), without);
    world->clock->advance(Seconds(10));
    settle();
    EXPECT_FALSE(isShown("statusBar"));
    EXPECT_EQ(table().height(), without);
}

} // namespace
} // namespace veltrix
