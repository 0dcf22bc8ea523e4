// SPDX-License-Identifier: GPL-3.0-or-later
// What a screen reader is told of single controls, and can do with them.
#include "ui_kit/accessibility/accessibility.h"

#include "support/task_outcome.h"

#include <QCheckBox>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(ButtonForScreenReaders, TellsWhatItIsAndPressesIt)
{
    installAccessibleRoles();
    QPushButton push(QStringLiteral("Save && &close"));
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(&push);
    EXPECT_EQ(seen->role(), QAccessible::Button);
    EXPECT_EQ(seen->text(QAccessible::Name), QStringLiteral("Save & close"));
    push.setAccessibleName(QStringLiteral("Save it"));
    EXPECT_EQ(seen->text(QAccessible::Name), QStringLiteral("Save it"));
    const QString press = QAccessibleActionInterface::pressAction();
    EXPECT_TRUE(seen->actionInterface()->actionNames().contains(press));
    const QSignalSpy pressed(&push, &QAbstractButton::clicked);
    seen->actionInterface()->doAction(press);
    waitFor([&] { return pressed.size() == 1; });
    push.setEnabled(false);
    EXPECT_TRUE(seen->state().disabled);
    EXPECT_FALSE(seen->actionInterface()->actionNames().contains(press));
    seen->actionInterface()->doAction(press);
    QTest::qWait(150);
    EXPECT_EQ(pressed.size(), 1);
    QMenu menu;
    push.setMenu(&menu);
    EXPECT_EQ(seen->role(), QAccessible::ButtonMenu);
    EXPECT_TRUE(seen->state().hasPopup);

    QCheckBox box(QStringLiteral("Daily"));
    seen = QAccessible::queryAccessibleInterface(&box);
    EXPECT_EQ(seen->role(), QAccessible::CheckBox);
    EXPECT_TRUE(seen->state().checkable);
    EXPECT_FALSE(seen->state().checked);
    seen->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    waitFor([&] { return box.isChecked(); });
    EXPECT_TRUE(seen->state().checked);
    box.setAutoExclusive(true);
    EXPECT_EQ(seen->role(), QAccessible::RadioButton);
}

TEST(ScrollAreaForScreenReaders, HasNothingInThePlaceOfAScrollBarThatHasGone)
{
    installAccessibleRoles();
    QScrollArea area;
    auto *content = new QWidget;
    content->setFixedSize(100, 1000);
    area.setWidget(content);
    area.resize(300, 200);
    area.show();
    QCoreApplication::processEvents();
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(&area);
    const int counted = seen->childCount();
    ASSERT_EQ(counted, 2) << "what is shown, and a scroll bar";
    QAccessibleInterface *bar = seen->child(1);
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(seen->indexOfChild(bar), 1);
    content->setFixedSize(100, 100);
    QCoreApplication::processEvents();
    EXPECT_EQ(seen->childCount(), 1);
    EXPECT_EQ(seen->child(0)->object(), area.viewport());
    // Who has counted before asks for it nevertheless.
    for (int index = 1; index < counted + 100; ++index)
        EXPECT_EQ(seen->child(index), nullptr);
    EXPECT_EQ(seen->child(-1), nullptr);
    EXPECT_EQ(seen->indexOfChild(bar), -1);
}

} // namespace
} // namespace veltrix
