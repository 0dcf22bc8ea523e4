// SPDX-License-Identifier: GPL-3.0-or-later
// The field that holds tags.
#include "ui_kit/widgets/tag_field.h"

#include "ui/support/ui_test.h"
#include "ui_kit/widgets/tag_chip.h"

#include <QCompleter>
#include <QLineEdit>
#include <QVBoxLayout>

namespace veltrix
{
namespace
{

class TagFieldTest : public testing::Test
{
protected:
    TagFieldTest()
    {
        testTheme();
        auto *layout = new QVBoxLayout(&window);
        before = new QLineEdit;
        field = new TagField(QStringLiteral("tagField"), QStringLiteral("Tags"));
        after = new QLineEdit;
        for (QWidget *widget : {static_cast<QWidget *>(before), static_cast<QWidget *>(field),
                                static_cast<QWidget *>(after)})
            layout->addWidget(widget);
        layout->addStretch(1);
        window.resize(300, 300);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        line()->setFocus();
    }
    QLineEdit *line() { return field->findChild<QLineEdit *>(QStringLiteral("tagFieldLine")); }
    void type(const QString &text) { QTest::keyClicks(line(), text); }
    void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    QList<RemovableTag *> chips()
    {
        QList<RemovableTag *> shown;
        for (RemovableTag *chip : field->findChildren<RemovableTag *>()) {
            if (chip->isVisible())
                shown.append(chip);
        }
        return shown;
    }
    QString refusal()
    {
        auto *label = field->findChild<TextLabel *>(QStringLiteral("tagFieldRefusal"));
        return label->isVisible() ? label->text() : QString();
    }

    QWidget window;
    QLineEdit *before = nullptr;
    TagField *field = nullptr;
    QLineEdit *after = nullptr;
};

TEST_F(TagFieldTest, CommaAndEnterEndATag)
{
    QSignalSpy changed(field, &TagField::tagsChanged);
    type(QStringLiteral("core,long  tail"));
    EXPECT_EQ(chips().size(), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(chips().size(), 2);
    EXPECT_EQ(field->tags(), (QStringList{QStringLiteral("core"), QStringLiteral("long tail")}));
    EXPECT_TRUE(line()->text().isEmpty());
    EXPECT_GT(changed.size(), 0);
    EXPECT_EQ(chips().first()->accessibleName(), QStringLiteral("core, remove"));
}

TEST_F(TagFieldTest, WhatIsBeingTypedCountsAndLeavingTheFieldEndsIt)
{
    type(QStringLiteral("core"));
    EXPECT_EQ(field->tags(), QStringList{QStringLiteral("core")});
    EXPECT_TRUE(chips().isEmpty());
    after->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(chips().size(), 1);
    EXPECT_EQ(field->tags(), QStringList{QStringLiteral("core")});
}

TEST_F(TagFieldTest, SeveralThatArePastedAreParted)
{
    line()->insert(QStringLiteral("core; autumn,, Core ,rest"));
    Q_EMIT line()->textEdited(line()->text());
    EXPECT_EQ(chips().size(), 2);
    EXPECT_EQ(line()->text(), QStringLiteral("rest"));
}

TEST_F(TagFieldTest, BackspaceInTheEmptyLineRemovesTheLastOne)
{
    field->setTags({QStringLiteral("core"), QStringLiteral("title")});
    type(QStringLiteral("x"));
    press(Qt::Key_Backspace);
    EXPECT_EQ(chips().size(), 2);
    press(Qt::Key_Backspace);
    EXPECT_EQ(field->tags(), QStringList{QStringLiteral("core")});
}

TEST_F(TagFieldTest, NamesThatDifferByCaseAreOneAndTheKnownSpellingHolds)
{
    field->setKnownTags({QStringLiteral("Core")});
    type(QStringLiteral("CORE,core,"));
    EXPECT_EQ(field->tags(), QStringList{QStringLiteral("Core")});
}

TEST_F(TagFieldTest, ANameThatCannotBeIsSaidAndStays)
{
    type(QString(41, u'a'));
    press(Qt::Key_Return);
    EXPECT_EQ(refusal(), QStringLiteral("The name of a tag has 40 characters at most."));
    EXPECT_TRUE(chips().isEmpty());
    EXPECT_TRUE(field->tags().isEmpty());
    press(Qt::Key_Backspace);
    EXPECT_EQ(refusal(), QString());
    press(Qt::Key_Return);
    EXPECT_EQ(chips().size(), 1);
}

TEST_F(TagFieldTest, TabGoesThroughTheChipsInTheirOrder)
{
    field->setTags({QStringLiteral("core"), QStringLiteral("title")});
    before->setFocus();
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), chips()[0]);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), chips()[1]);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), line());
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), after);
}

TEST_F(TagFieldTest, LeftLeadsToTheChipsAndDeleteTakesOneOff)
{
    field->setTags({QStringLiteral("core"), QStringLiteral("title")});
    line()->setFocus();
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(QApplication::focusWidget(), chips()[0]);
    press(Qt::Key_Delete);
    EXPECT_EQ(field->tags(), QStringList{QStringLiteral("title")});
    EXPECT_EQ(QApplication::focusWidget(), line());
}

TEST_F(TagFieldTest, AClickOnTheCrossTakesATagOffAndOneOnTheNameDoesNot)
{
    field->setTags({QStringLiteral("core")});
    RemovableTag *chip = chips().first();
    QTest::mouseClick(chip, Qt::LeftButton, {}, QPoint(10, chip->height() / 2));
    EXPECT_EQ(field->tags().size(), 1);
    QTest::mouseClick(chip, Qt::LeftButton, {}, QPoint(chip->width() - 8, chip->height() / 2));
    EXPECT_TRUE(field->tags().isEmpty());
}

TEST_F(TagFieldTest, GrowsByRowsAndKeepsEveryChipInside)
{
    const int oneRow = field->height();
    QStringList names{QString(40, u'W')};
    for (int i = 0; i < 8; ++i)
        names.append(QStringLiteral("tag %1").arg(i));
    field->setTags(names);
    EXPECT_TRUE(QTest::qWaitFor([&] { return field->height() > oneRow * 2; }));
    for (const RemovableTag *chip : chips())
        EXPECT_TRUE(chip->parentWidget()->rect().contains(chip->geometry()))
            << chip->name().toStdString();
    field->setTags({});
    EXPECT_TRUE(QTest::qWaitFor([&] { return field->height() == oneRow; }));
}

TEST_F(TagFieldTest, AChipHasRoomForItsWholeNameAndTheCross)
{
    field->setTags({QStringLiteral("core")});
    const RemovableTag *chip = chips().first();
    const TagChip plain = TagChip::of(QStringLiteral("core"));
    EXPECT_GE(chip->width(), tagChipSize(plain, chip->font()).width() + 14);
}

TEST_F(TagFieldTest, CompletesFromKnownTagsThatItDoesNotHold)
{
    field->setKnownTags({QStringLiteral("autumn"), QStringLiteral("core")});
    field->setTags({QStringLiteral("core")});
    QCompleter *completer = line()->completer();
    completer->setCompletionPrefix(QStringLiteral("U"));
    EXPECT_EQ(completer->completionCount(), 1);
    completer->setCompletionPrefix(QStringLiteral("core"));
    EXPECT_EQ(completer->completionCount(), 0);
    line()->setText(QStringLiteral("autumn"));
    Q_EMIT completer->activated(QStringLiteral("autumn"));
    QCoreApplication::processEvents();
    EXPECT_EQ(chips().size(), 2);
}

} // namespace
} // namespace veltrix
