// SPDX-License-Identifier: GPL-3.0-or-later
// Where the keyboard focus goes, what it presses, and what a sheet keeps from assistive technology.
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/accessibility/cover.h"
#include "ui_kit/widgets/app_row_list.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/expandable_text.h"
#include "ui_kit/widgets/focus_keeper.h"
#include "ui_kit/widgets/focus_steps.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/loadable_view.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/sheet_frame.h"
#include "ui_kit/widgets/text_field.h"

#include "support/json_printers.h"
#include "ui/support/ui_world.h"

#include <QApplication>
#include <QListView>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStringListModel>
#include <QTest>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void press(Qt::Key key)
{
    ASSERT_TRUE(QApplication::focusWidget());
    QTest::keyClick(QApplication::focusWidget(), key);
    settle();
}

class SheetFocus : public testing::Test
{
protected:
    SheetFocus()
    {
        installAccessibleRoles();
        window.resize(800, 600);
        opener = new Button(Button::Kind::Standard, QStringLiteral("Open"), &window);
        nameControl(opener, QStringLiteral("opener"), QStringLiteral("Open"));
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        opener->setFocus();
    }
    ~SheetFocus() override { settle(); }

    /// A sheet with "Retry" in its body and "Close" in its header.
    void openRetrySheet()
    {
        sheet = new SheetFrame(QStringLiteral("sheet"), QStringLiteral("Sheet"),
                               SheetFrame::Body::Scrolled, {400, 300});
        close = sheet->addCloseButton(QStringLiteral("close"), QString(), QStringLiteral("Close"),
                                      QStringLiteral("Close"));
        retry = new Button(Button::Kind::Standard, QStringLiteral("Retry"));
        nameControl(retry, QStringLiteral("retry"), QStringLiteral("Retry"));
        sheet->body()->addWidget(retry);
        after = new Button(Button::Kind::Standard, QStringLiteral("After"));
        nameControl(after, QStringLiteral("after"), QStringLiteral("After"));
        sheet->body()->addWidget(after);
        openSheet(opener, sheet);
        retry->setFocus(Qt::TabFocusReason);
    }
    [[nodiscard]] bool isOpen() const { return Overlay::isOpenOver(&window); }

    QWidget window;
    Button *opener = nullptr;
    SheetFrame *sheet = nullptr;
    Button *close = nullptr;
    Button *retry = nullptr;
    Button *after = nullptr;
};

TEST_F(SheetFocus, TheSecondSpaceOnARetryThatHasVanishedPressesNothing)
{
    openRetrySheet();
    const QSignalSpy otherPressed(after, &Button::clicked);
    QObject::connect(retry, &Button::clicked, retry, &QWidget::hide);
    press(Qt::Key_Space);
    EXPECT_FALSE(retry->isVisible());
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(otherPressed.size(), 0);
    EXPECT_EQ(QApplication::focusWidget(), sheet);
}

TEST_F(SheetFocus, AControlThatIsDisabledLeavesTheFocusToTheSheet)
{
    openRetrySheet();
    QObject::connect(retry, &Button::clicked, retry, [this] { retry->setEnabled(false); });
    press(Qt::Key_Space);
    EXPECT_EQ(QApplication::focusWidget(), sheet);
    press(Qt::Key_Space);
    EXPECT_TRUE(isOpen());
}

TEST_F(SheetFocus, AControlThatIsDeletedLeavesTheFocusToTheSheet)
{
    openRetrySheet();
    delete retry;
    settle();
    EXPECT_EQ(QApplication::focusWidget(), sheet);
    press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen()) << "keys still reach the sheet";
}

TEST_F(SheetFocus, AControlDisabledWithWhatIsAroundItLeavesTheFocusToTheSheet)
{
    openRetrySheet();
    retry->parentWidget()->setEnabled(false);
    settle();
    EXPECT_EQ(QApplication::focusWidget(), sheet);
}

TEST_F(SheetFocus, ARetryThatReturnsHasTheFocusAgainUnlessTheUserHasMovedOn)
{
    openRetrySheet();
    retry->hide();
    settle();
    retry->show();
    settle();
    EXPECT_EQ(QApplication::focusWidget(), retry);
    retry->hide();
    settle();
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), after) << "Tab goes on from where it was";
    retry->show();
    settle();
    EXPECT_EQ(QApplication::focusWidget(), after);
}

TEST_F(SheetFocus, AButtonThatReturnsWithAnotherNameDoesNotTakeTheFocus)
{
    openRetrySheet();
    retry->hide();
    settle();
    retry->setAccessibleName(QStringLiteral("Delete"));
    retry->show();
    settle();
    EXPECT_EQ(QApplication::focusWidget(), sheet);
}

TEST_F(SheetFocus, APageThatTakesTheFocusedOnesPlaceDoesNotGiveItToItsFirstControl)
{
    openRetrySheet();
    auto *view = new LoadableView(QStringLiteral("message"));
    sheet->body()->addWidget(view);
    auto *page = new QWidget;
    makeColumn(0, page)->addWidget(new Button(Button::Kind::Primary, QStringLiteral("Track")));
    view->showMessage({{}, QStringLiteral("Failed"), {}, QStringLiteral("Try again")});
    settle();
    view->findChild<Button *>(QStringLiteral("messageAction"))->setFocus();
    view->showPage(page);
    settle();
    EXPECT_EQ(QApplication::focusWidget(), sheet);
}

TEST_F(SheetFocus, ASheetThatHoldsTheFocusItselfShowsIt)
{
    openRetrySheet();
    retry->setFocus(Qt::TabFocusReason);
    window.setAttribute(Qt::WA_KeyboardFocusChange);
    settle();
    const QRect edge = sheet->geometry().adjusted(-3, -3, 3, 3);
    const QImage before = window.grab(edge).toImage();
    retry->hide();
    settle();
    EXPECT_NE(window.grab(edge).toImage().pixelColor(edge.width() / 2, 2),
              before.pixelColor(edge.width() / 2, 2));
}

TEST_F(SheetFocus, WhatLiesBehindCannotTakeTheFocus)
{
    openRetrySheet();
    opener->setFocus();
    settle();
    EXPECT_TRUE(sheet == QApplication::focusWidget() ||
                sheet->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(SheetFocus, EnterPressesTheFocusedButtonOnceHoweverLongItIsHeld)
{
    openRetrySheet();
    const QSignalSpy pressed(retry, &Button::clicked);
    press(Qt::Key_Return);
    press(Qt::Key_Enter);
    EXPECT_EQ(pressed.size(), 2);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(retry, &held);
    EXPECT_EQ(pressed.size(), 2);
    QTest::keyClick(retry, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(pressed.size(), 2) << "Ctrl+Enter is for the card around";
}

TEST_F(SheetFocus, ASheetScrollsByKeysFromItsCloseButton)
{
    openRetrySheet();
    auto *tall = new QWidget;
    tall->setMinimumHeight(2000);
    sheet->body()->addWidget(tall);
    settle();
    close->setFocus();
    QScrollBar *bar = sheet->scrollArea()->verticalScrollBar();
    press(Qt::Key_PageDown);
    EXPECT_GT(bar->value(), 0);
    press(Qt::Key_End);
    EXPECT_EQ(bar->value(), bar->maximum());
    press(Qt::Key_Home);
    EXPECT_EQ(bar->value(), 0);
    press(Qt::Key_Down);
    EXPECT_GT(bar->value(), 0);
    EXPECT_EQ(QApplication::focusWidget(), close);
}

TEST_F(SheetFocus, AScrollAreaIsNoStopOfTab)
{
    openRetrySheet();
    EXPECT_FALSE(sheet->scrollArea()->focusPolicy() & Qt::TabFocus);
}

TEST_F(SheetFocus, AFixedBodyScrollsWhereTheWindowIsTooLow)
{
    window.resize(800, 300);
    sheet = new SheetFrame(QStringLiteral("sheet"), QStringLiteral("Sheet"),
                           SheetFrame::Body::Fixed, {400, 600});
    auto *chart = new QWidget;
    chart->setMinimumHeight(250);
    sheet->body()->addWidget(chart);
    openSheet(opener, sheet);
    settle();
    EXPECT_EQ(chart->height(), 250);
    EXPECT_GT(sheet->scrollArea()->verticalScrollBar()->maximum(), 0);
    window.resize(800, 700);
    settle();
    EXPECT_EQ(sheet->scrollArea()->verticalScrollBar()->maximum(), 0);
    EXPECT_GT(chart->height(), 250);
}

TEST_F(SheetFocus, ASheetOverASheetDimsOnceAndShowsTheWayBack)
{
    openRetrySheet();
    settle();
    const QColor dimmed = window.grab().toImage().pixelColor(5, 590);
    auto *details = new SheetFrame(QStringLiteral("details"), QStringLiteral("Details"),
                                   SheetFrame::Body::Scrolled, {300, 200});
    auto *done = details->addCloseButton(QStringLiteral("done"), QString(), QStringLiteral("Done"),
                                         QStringLiteral("Done"));
    auto *action = new Button(Button::Kind::Standard, QStringLiteral("Action"));
    nameControl(action, QStringLiteral("action"), QStringLiteral("Action"));
    details->addAction(action);
    openSheet(sheet, details);
    settle();
    EXPECT_EQ(window.grab().toImage().pixelColor(5, 590), dimmed);
    auto *back = details->findChild<Button *>(QStringLiteral("detailsBack"));
    ASSERT_TRUE(back->isVisible());
    EXPECT_EQ(back->accessibleName(), QStringLiteral("Back to Sheet"));
    EXPECT_EQ(QApplication::focusWidget(), back);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), action);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), done);
    back->click();
    settle();
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(Overlay::topOf(&window)->content(), sheet);
    EXPECT_FALSE(sheet->findChild<Button *>(QStringLiteral("sheetBack"))->isVisible());
}

TEST_F(SheetFocus, WhatAListBehindTellsOfItsRowsIsToldOfTheList)
{
    auto *list = new QListView(&window);
    QStringListModel names({QStringLiteral("One"), QStringLiteral("Two")});
    list->setModel(&names);
    list->show();
    openRetrySheet();
    settle();
    QAccessibleEvent event(list, QAccessible::Focus);
    event.setChild(1);
    // The toolkit writes a warning where there is none.
    EXPECT_EQ(event.accessibleInterface(), QAccessible::queryAccessibleInterface(list));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(list)->childCount(), 0);
    press(Qt::Key_Escape);
    settle();
}

TEST_F(SheetFocus, WhatLiesBehindCannotBePressedByAssistiveTechnology)
{
    auto *field = new TextField(QStringLiteral("field"), QStringLiteral("Field"), {}, &window);
    auto *list = new QListView(&window);
    QStringListModel names({QStringLiteral("One"), QStringLiteral("Two")});
    list->setModel(&names);
    for (QWidget *widget : {static_cast<QWidget *>(field), static_cast<QWidget *>(list)})
        widget->show();
    const auto seen = [](QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget);
    };
    ASSERT_TRUE(seen(opener)->actionInterface());
    ASSERT_TRUE(seen(field)->editableTextInterface());
    const QAccessibleInterface *held = seen(opener);
    QAccessibleActionInterface *action = seen(opener)->actionInterface();
    const QAccessible::Id heldField = QAccessible::uniqueId(seen(field));
    openRetrySheet();
    settle();
    EXPECT_EQ(seen(opener), held);
    EXPECT_TRUE(held->state().disabled);
    EXPECT_TRUE(action->actionNames().isEmpty()) << "a reference from before";
    const QSignalSpy pressed(opener, &QAbstractButton::clicked);
    action->doAction(QAccessibleActionInterface::pressAction());
    QTest::qWait(150);
    EXPECT_EQ(pressed.size(), 0);
    EXPECT_EQ(QAccessible::accessibleInterface(heldField), nullptr) << "a reference from before";
    EXPECT_EQ(seen(opener)->actionInterface(), nullptr);
    EXPECT_EQ(seen(field)->editableTextInterface(), nullptr);
    EXPECT_EQ(seen(list)->tableInterface(), nullptr);
    EXPECT_EQ(seen(list)->childCount(), 0);
    EXPECT_NE(seen(close)->actionInterface(), nullptr);

    press(Qt::Key_Escape);
    EXPECT_FALSE(seen(opener)->state().disabled);
    ASSERT_TRUE(seen(opener)->actionInterface());
    EXPECT_TRUE(seen(opener)->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::pressAction()));
    EXPECT_TRUE(seen(field)->editableTextInterface());
}

/// A button that tells how many follow its end.
struct FollowedButton : Button {
    using Button::Button;
    [[nodiscard]] int followers() const { return receivers(SIGNAL(destroyed(QObject *))); }
};

TEST_F(SheetFocus, OpeningSheetsAgainAndAgainLeavesNothingBehind)
{
    FollowedButton button(Button::Kind::Standard, QStringLiteral("Go"), &window);
    button.show();
    ASSERT_TRUE(QAccessible::queryAccessibleInterface(&button));
    const int followers = button.followers();
    for (int i = 0; i < 5; ++i) {
        openRetrySheet();
        settle();
        EXPECT_TRUE(QAccessible::queryAccessibleInterface(&button)->state().disabled);
        press(Qt::Key_Escape);
        settle();
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(&button)->state().disabled);
    }
    EXPECT_EQ(button.followers(), followers);
}

TEST_F(SheetFocus, ASheetUnderASheetIsBehindToo)
{
    openRetrySheet();
    auto *details = new SheetFrame(QStringLiteral("details"), QStringLiteral("Details"),
                                   SheetFrame::Body::Scrolled, {300, 200});
    openSheet(sheet, details);
    settle();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(retry)->actionInterface(), nullptr);
    press(Qt::Key_Escape);
    EXPECT_NE(QAccessible::queryAccessibleInterface(retry)->actionInterface(), nullptr);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(opener)->actionInterface(), nullptr);
}

TEST(ExpandedState, IsToldToScreenReaders)
{
    installAccessibleRoles();
    ExpandableText text(QStringLiteral("about"));
    text.resize(200, 200);
    text.setText(QStringLiteral("word ").repeated(200));
    text.show();
    auto *toggle = text.findChild<Button *>(QStringLiteral("aboutToggle"));
    const auto state = [&] {
        return QAccessible::queryAccessibleInterface(toggle)->state();
    };
    EXPECT_EQ(QAccessible::queryAccessibleInterface(toggle)->role(), QAccessible::Button);
    EXPECT_TRUE(state().expandable);
    EXPECT_TRUE(state().collapsed);
    EXPECT_FALSE(state().expanded);
    QAccessible::queryAccessibleInterface(toggle)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(state().expanded);
    EXPECT_FALSE(state().collapsed);
}

TEST(FocusSteps, FollowTheKeysOfItemViews)
{
    using Steps = std::vector<std::optional<int>>;
    const auto list = [](int from, Qt::Key key) {
        return stepIn(10, from, key, 1, 4);
    };
    EXPECT_EQ((Steps{list(3, Qt::Key_Up), list(3, Qt::Key_Down), list(3, Qt::Key_PageDown),
                     list(8, Qt::Key_PageDown), list(3, Qt::Key_PageUp), list(3, Qt::Key_Home),
                     list(3, Qt::Key_End)}),
              (Steps{2, 4, 7, 9, 0, 0, 9}));
    EXPECT_EQ(list(0, Qt::Key_Up), std::nullopt);
    EXPECT_EQ(list(9, Qt::Key_Down), std::nullopt);
    EXPECT_EQ(list(9, Qt::Key_End), std::nullopt);
    EXPECT_EQ(list(3, Qt::Key_Left), std::nullopt);
    EXPECT_EQ(list(3, Qt::Key_A), std::nullopt);
    // Three abreast: 0 1 2 / 3 4 5 / 6 7.
    const auto grid = [](int from, Qt::Key key, Qt::LayoutDirection direction = Qt::LeftToRight) {
        return stepIn(8, from, key, 3, 2, direction);
    };
    EXPECT_EQ((Steps{grid(1, Qt::Key_Down), grid(4, Qt::Key_Up), grid(4, Qt::Key_Left),
                     grid(4, Qt::Key_Right), grid(1, Qt::Key_PageDown), grid(7, Qt::Key_PageUp)}),
              (Steps{4, 1, 3, 5, 7, 1}));
    EXPECT_EQ(grid(5, Qt::Key_Down), std::nullopt);
    EXPECT_EQ(grid(4, Qt::Key_Left, Qt::RightToLeft), 5);
}

class RowsByKeys : public testing::Test
{
protected:
    RowsByKeys()
        : images(artwork), page(new QWidget),
          rows(new AppRowList(QStringLiteral("row"), AppRowLook::Padded, AppRowList::Ranks::Shown,
                              images, [](AppRow &row) {
                                  auto *track =
                                      new Button(Button::Kind::Link, QStringLiteral("Track"));
                                  nameControl(track, QStringLiteral("track"),
                                              QStringLiteral("Track"));
                                  row.setTrailing(track);
                              }))
    {
        makeColumn(0, page)->addWidget(rows);
        area.reset(makeScrollPage(QStringLiteral("page"), QStringLiteral("Page"), page));
        QList<ITunesAppResult> apps;
        for (int i = 0; i < 30; ++i) {
            ITunesAppResult app;
            app.trackId = i + 1;
            app.trackName = QStringLiteral("App %1").arg(i + 1);
            apps.append(app);
        }
        area->resize(400, 300);
        rows->setApps(apps);
        area->show();
        area->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(area.get()));
        area->grab();
    }
    [[nodiscard]] QString focused() const
    {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }

    FakeArtwork artwork;
    ArtworkImages images;
    QWidget *page;
    AppRowList *rows;
    std::unique_ptr<QScrollArea> area;
};

TEST_F(RowsByKeys, AreWalkedByArrowsAndPagesAndStayInView)
{
    rows->findChild<AppRow *>(QStringLiteral("row1"))->setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("row2"));
    press(Qt::Key_PageDown);
    EXPECT_GT(focused().mid(3).toInt(), 4);
    press(Qt::Key_End);
    EXPECT_EQ(focused(), QStringLiteral("row30"));
    EXPECT_EQ(area->verticalScrollBar()->value(), area->verticalScrollBar()->maximum());
    press(Qt::Key_Home);
    EXPECT_EQ(focused(), QStringLiteral("row1"));
    EXPECT_EQ(area->verticalScrollBar()->value(), 0);
}

TEST_F(RowsByKeys, TheButtonsOfTheRowsAreWalkedToo)
{
    auto *first = rows->findChild<AppRow *>(QStringLiteral("row1"));
    first->findChild<Button *>(QStringLiteral("track"))->setFocus();
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), QStringLiteral("track"));
    EXPECT_EQ(QApplication::focusWidget()->parentWidget()->objectName(), QStringLiteral("row2"));
}

} // namespace
} // namespace veltrix
