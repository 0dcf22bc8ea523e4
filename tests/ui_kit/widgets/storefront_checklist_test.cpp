// SPDX-License-Identifier: GPL-3.0-or-later
// Choosing several storefronts, and the field of many lines.
#include "ui_kit/widgets/storefront_checklist.h"

#include "support/json_printers.h"
#include "ui/support/ui_test.h"
#include "ui_kit/widgets/text_area.h"

#include <QAbstractItemModelTester>
#include <QListView>
#include <QMimeData>

namespace veltrix
{
namespace
{

class StorefrontChecklistTest : public testing::Test
{
protected:
    StorefrontChecklistTest()
    {
        testTheme();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void open(const QStringList &codes)
    {
        model.setChecked(codes);
        list = std::make_unique<StorefrontChecklist>(model);
        list->resize(list->sizeHint());
        // A window of its own would be none of the program's.
        list->setParent(&window);
        window.resize(400, 400);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    QListView *view() { return list->findChild<QListView *>(); }
    TextField *field() { return list->findChild<TextField *>(); }
    QString count()
    {
        return list->findChild<TextLabel *>(QStringLiteral("storefrontChecklistCount"))->text();
    }
    QStringList firstCodes(int number)
    {
        QStringList codes;
        for (int row = 0; row < std::min(number, model.rowCount()); ++row)
            codes << model.index(row).data(StorefrontCheckModel::codeRole).toString();
        return codes;
    }
    QString spoken(int row) { return model.index(row).data(Qt::AccessibleTextRole).toString(); }

    QWidget window;
    StorefrontCheckModel model;
    std::unique_ptr<StorefrontChecklist> list;
};

TEST_F(StorefrontChecklistTest, TheCheckedOnesLeadAndTheOthersFollowInTheirOrder)
{
    const QAbstractItemModelTester tester(&model);
    model.setChecked({QStringLiteral("de"), QStringLiteral("JP"), QStringLiteral("UK")});
    EXPECT_EQ(model.checked(), (QStringList{QStringLiteral("DE"), QStringLiteral("JP")}));
    EXPECT_EQ(firstCodes(5).join(u' '), QStringLiteral("DE JP US GB CA"));
    EXPECT_EQ(model.rowCount(), 47);
    EXPECT_EQ(spoken(0), QStringLiteral("Germany, checked"));
    EXPECT_EQ(spoken(2), QStringLiteral("United States, not checked"));
}

TEST_F(StorefrontChecklistTest, WhatIsCheckedStaysWhereItIsUntilTheListOpensAgain)
{
    const QAbstractItemModelTester tester(&model);
    model.setChecked({QStringLiteral("US")});
    model.toggle(model.index(4));
    EXPECT_EQ(model.checked(), (QStringList{QStringLiteral("US"), QStringLiteral("DE")}));
    EXPECT_EQ(firstCodes(5).join(u' '), QStringLiteral("US GB CA AU DE"));
    model.toggle(model.index(0));
    EXPECT_EQ(model.checked(), QStringList{QStringLiteral("DE")});
    model.setChecked(model.checked());
    EXPECT_EQ(firstCodes(3).join(u' '), QStringLiteral("DE US GB"));
}

TEST_F(StorefrontChecklistTest, ArrowsMoveAndSpaceChecks)
{
    open({QStringLiteral("US")});
    EXPECT_EQ(count(), QStringLiteral("1 chosen"));
    view()->setFocus();
    QTest::keyClick(view(), Qt::Key_Down);
    QTest::keyClick(view(), Qt::Key_Down);
    QTest::keyClick(view(), Qt::Key_Space);
    EXPECT_EQ(model.checked(), (QStringList{QStringLiteral("US"), QStringLiteral("CA")}));
    EXPECT_EQ(count(), QStringLiteral("2 chosen"));
    QTest::keyClick(view(), Qt::Key_Space);
    EXPECT_EQ(model.checked(), QStringList{QStringLiteral("US")});
}

TEST_F(StorefrontChecklistTest, TypingFiltersAndEnterChecksTheCurrentOne)
{
    open({QStringLiteral("US")});
    field()->setFocus();
    QTest::keyClicks(field(), QStringLiteral("united "));
    EXPECT_EQ(firstCodes(9).join(u' '), QStringLiteral("US GB AE"));
    QTest::keyClick(field(), Qt::Key_Down);
    QTest::keyClick(field(), Qt::Key_Return);
    EXPECT_EQ(model.checked(), (QStringList{QStringLiteral("US"), QStringLiteral("GB")}));
    field()->clear();
    EXPECT_EQ(model.rowCount(), 47);
}

TEST_F(StorefrontChecklistTest, AClickAnywhereInTheRowChecks)
{
    open({QStringLiteral("US")});
    const QRect row = view()->visualRect(model.index(1));
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, {6, row.center().y()});
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {},
                      view()->visualRect(model.index(3)).center());
    EXPECT_EQ(model.checked().join(u' '), QStringLiteral("US GB AU"));
}

/// The field's protected side, as a drop reaches it.
class DroppedOn : public QPlainTextEdit
{
public:
    using QPlainTextEdit::canInsertFromMimeData;
    using QPlainTextEdit::insertFromMimeData;
};

TEST(TextArea, TakesTextAndTellsOfFilesThatAreDropped)
{
    TextArea area(QStringLiteral("area"), QStringLiteral("Words"));
    const QSignalSpy brought(&area, &TextArea::filesBrought);
    QMimeData data;
    data.setText(QStringLiteral("one\u2028two"));
    (area.*(&DroppedOn::insertFromMimeData))(&data);
    EXPECT_EQ(area.toPlainText(), QStringLiteral("one\ntwo"));
    data.setUrls({QUrl::fromLocalFile(QStringLiteral("/home/user/a b.csv"))});
    EXPECT_TRUE((area.*(&DroppedOn::canInsertFromMimeData))(&data));
    (area.*(&DroppedOn::insertFromMimeData))(&data);
    EXPECT_EQ(area.toPlainText(), QStringLiteral("one\ntwo"));
    ASSERT_EQ(brought.count(), 1);
    EXPECT_EQ(brought[0][0].toStringList(), QStringList{QStringLiteral("/home/user/a b.csv")});
}

} // namespace
} // namespace veltrix
