// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/overlay.h"

#include "support/json_printers.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/confirm_sheet.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_field.h"

#include <QAbstractItemModelTester>
#include <QListView>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

QWidget *cardWithTwoFields()
{
    auto *card = new QWidget;
    card->setAccessibleName(QStringLiteral("Card"));
    auto *layout = new QVBoxLayout(card);
    layout->addWidget(new TextField(QStringLiteral("first"), QStringLiteral("First"), {}));
    layout->addWidget(new TextField(QStringLiteral("second"), QStringLiteral("Second"), {}));
    return card;
}

class OverlayTest : public testing::Test
{
protected:
    OverlayTest()
    {
        window.resize(800, 600);
        opener = new Button(Button::Kind::Standard, QStringLiteral("Open"), &window);
        opener->setGeometry(700, 10, 80, 30);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        opener->setFocus();
    }
    ~OverlayTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    QWidget window;
    Button *opener = nullptr;
};

TEST(SheetLayout, IsCentredWithAMarginAndNeverLargerThanTheWindow)
{
    EXPECT_EQ(layoutSheet(QRect(0, 0, 1280, 800), QSize(740, 500)), QRect(270, 150, 740, 500));
    EXPECT_EQ(layoutSheet(QRect(0, 0, 1280, 800), QSize(740, 2000)), QRect(270, 40, 740, 720));
    // A low window has no room to give away.
    EXPECT_EQ(layoutSheet(QRect(0, 0, 1280, 672), QSize(740, 2000)), QRect(270, 40, 740, 592));
    EXPECT_EQ(layoutSheet(QRect(0, 0, 800, 500), QSize(900, 2000)), QRect(24, 12, 752, 476));
}

TEST(PopoverLayout, HangsBelowItsAnchorInsideTheWindow)
{
    const QRect window(0, 0, 1280, 800);
    EXPECT_EQ(layoutPopover(window, QRect(1000, 12, 140, 30), QSize(380, 180)),
              QRect(760, 48, 380, 180));
    EXPECT_EQ(layoutPopover(window, QRect(10, 12, 60, 30), QSize(380, 180)),
              QRect(8, 48, 380, 180));
    // No room below: above.
    EXPECT_EQ(layoutPopover(window, QRect(1000, 760, 140, 30), QSize(380, 180)),
              QRect(760, 574, 380, 180));
    // Room nowhere: as much as fits.
    EXPECT_TRUE(window.contains(layoutPopover(window, QRect(600, 400, 10, 10), QSize(900, 2000))));
}

TEST_F(OverlayTest, EscapeClosesASheetAndGivesTheFocusBack)
{
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, opener, cardWithTwoFields());
    const QSignalSpy dismissed(overlay, &Overlay::dismissed);
    EXPECT_TRUE(Overlay::isOpenOver(&window));
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("first"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(dismissed.size(), 1);
    EXPECT_FALSE(Overlay::isOpenOver(&window));
    EXPECT_EQ(QApplication::focusWidget(), opener);
}

TEST_F(OverlayTest, TheContentIsDeletedWithIt)
{
    const QPointer<QWidget> card = cardWithTwoFields();
    Overlay::open(Overlay::Kind::Sheet, opener, card)->dismiss();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(card.isNull());
}

TEST_F(OverlayTest, TabStaysInside)
{
    Overlay::open(Overlay::Kind::Sheet, opener, cardWithTwoFields());
    QStringList visited;
    for (int i = 0; i < 4; ++i) {
        visited << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(visited, (QStringList{QStringLiteral("first"), QStringLiteral("second"),
                                    QStringLiteral("first"), QStringLiteral("second")}));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("second"));
}

TEST_F(OverlayTest, ASheetTakesAllClicksOfTheWindow)
{
    const QSignalSpy clicked(opener, &Button::clicked);
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, opener, cardWithTwoFields());
    QTest::mouseClick(window.childAt(opener->geometry().center()), Qt::LeftButton);
    EXPECT_EQ(clicked.size(), 0);
    EXPECT_TRUE(Overlay::isOpenOver(&window));
    overlay->dismiss();
}

TEST_F(OverlayTest, AClickOutsideClosesAPopoverAndAClickInsideDoesNot)
{
    Overlay *overlay = Overlay::open(Overlay::Kind::Popover, opener, cardWithTwoFields());
    const QRect card = overlay->content()->geometry();
    QTest::mouseClick(overlay, Qt::LeftButton, {}, card.topLeft() + QPoint(2, 2));
    EXPECT_TRUE(Overlay::isOpenOver(&window));
    QTest::mouseClick(overlay, Qt::LeftButton, {}, QPoint(5, 500));
    EXPECT_FALSE(Overlay::isOpenOver(&window));
}

TEST_F(OverlayTest, FollowsTheSizeOfTheWindow)
{
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, opener, cardWithTwoFields());
    window.resize(1000, 700);
    EXPECT_EQ(overlay->size(), window.size());
    EXPECT_EQ(overlay->content()->geometry().center().x(), 499);
    overlay->dismiss();
}

TEST_F(OverlayTest, ASecondOneLiesOverTheFirstAndClosesAlone)
{
    Overlay *sheet = Overlay::open(Overlay::Kind::Sheet, opener, cardWithTwoFields());
    Overlay *inner = Overlay::open(Overlay::Kind::Popover, sheet->content(), cardWithTwoFields());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(inner->isVisible());
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_TRUE(sheet->isAncestorOf(QApplication::focusWidget()));
    sheet->dismiss();
}

class ConfirmTest : public OverlayTest
{
protected:
    ConfirmTest()
    {
        ConfirmSheet::ask(
            opener,
            {QStringLiteral("Delete?"), QStringLiteral("All of it."), QStringLiteral("Delete")},
            [this] { ++agreed; });
    }
    template <class T>
    T *find(const char *name)
    {
        return window.findChild<T *>(QString::fromLatin1(name));
    }
    int agreed = 0;
};

TEST_F(ConfirmTest, EnterAtFirstCancels)
{
    EXPECT_EQ(QApplication::focusWidget(), find<Button>("confirmCancel"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(agreed, 0);
    EXPECT_FALSE(Overlay::isOpenOver(&window));
}

TEST_F(ConfirmTest, TheDestructiveButtonAgreesOnce)
{
    find<Button>("confirmAccept")->click();
    EXPECT_EQ(agreed, 1);
    EXPECT_FALSE(Overlay::isOpenOver(&window));
}

TEST_F(ConfirmTest, EscapeDestroysNothing)
{
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(agreed, 0);
}

class PickerTest : public OverlayTest
{
protected:
    PickerTest()
        : picker(QStringLiteral("picker"), QStringLiteral("Storefront filter"),
                 StorefrontPicker::Offer::AllAndStorefronts, &window)
    {
        picker.show();
    }
    QListView *list() { return window.findChild<QListView *>(QStringLiteral("storefrontList")); }
    TextField *filter()
    {
        return window.findChild<TextField *>(QStringLiteral("storefrontSearch"));
    }

    StorefrontPicker picker;
};

TEST_F(PickerTest, OffersAllCountriesFirstAndThenTheStorefronts)
{
    picker.click();
    ASSERT_TRUE(list());
    EXPECT_EQ(list()->model()->rowCount(), 48);
    EXPECT_EQ(list()->model()->index(0, 0).data().toString(), QStringLiteral("All Countries"));
    EXPECT_EQ(list()->currentIndex().row(), 0);
}

TEST_F(PickerTest, TypingFiltersByNameAndCodeAndEnterPicks)
{
    const QSignalSpy picked(&picker, &StorefrontPicker::picked);
    picker.click();
    QTest::keyClicks(filter(), QStringLiteral("germ"));
    EXPECT_EQ(list()->model()->rowCount(), 1);
    QTest::keyClick(filter(), Qt::Key_Return);
    EXPECT_EQ(picked.size(), 1);
    EXPECT_EQ(picker.code(), QStringLiteral("DE"));
    EXPECT_EQ(picker.text(), QStringLiteral("Germany"));
    EXPECT_EQ(picker.accessibleName(), QStringLiteral("Storefront filter: Germany"));
    EXPECT_FALSE(Overlay::isOpenOver(&window));
}

TEST_F(PickerTest, ArrowsInTheFieldMoveThroughTheList)
{
    picker.click();
    QTest::keyClick(filter(), Qt::Key_Down);
    QTest::keyClick(filter(), Qt::Key_Return);
    EXPECT_EQ(picker.code(), QStringLiteral("US"));
}

TEST_F(PickerTest, EscapeKeepsTheChoice)
{
    const QSignalSpy picked(&picker, &StorefrontPicker::picked);
    picker.setCode(QStringLiteral("JP"));
    picker.click();
    QTest::keyClick(filter(), Qt::Key_Escape);
    EXPECT_EQ(picker.code(), QStringLiteral("JP"));
    EXPECT_EQ(picked.size(), 0);
}

TEST(StorefrontListModel, IsAModel)
{
    StorefrontListModel model(StorefrontListModel::Offer::Storefronts);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model.rowCount(), 47);
    EXPECT_EQ(model.codeAt(0), QStringLiteral("US"));
    model.setFilter(QStringLiteral("  jp "));
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.rowOf(QStringLiteral("JP")), 0);
    EXPECT_EQ(model.rowOf(QStringLiteral("US")), -1);
    model.setFilter(QStringLiteral("nowhere"));
    EXPECT_EQ(model.rowCount(), 0);
}

} // namespace
} // namespace veltrix
