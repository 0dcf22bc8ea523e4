// SPDX-License-Identifier: GPL-3.0-or-later
// The keyword column stays in view while the table scrolls sideways.
#include "ui/support/painted_texts.h"
#include "ui/support/ui_test.h"

#include "ui_kit/table/table_header.h"

#include <QAccessible>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class HeldColumnTest : public UiTest
{
protected:
    HeldColumnTest()
    {
        open();
        window->resize(1024, 700);
        for (const KeywordColumn column :
             {KeywordColumn::Target, KeywordColumn::Popularity, KeywordColumn::Difficulty})
            header().resizeSection(int(column), 260);
        header().resizeSection(keyword, 240);
        settle();
    }

    static constexpr int keyword = int(KeywordColumn::Keyword);

    int width() { return header().sectionSize(keyword); }
    TableHeader &header() { return *static_cast<TableHeader *>(table().horizontalHeader()); }
    QScrollBar &sideways() { return *table().horizontalScrollBar(); }
    QRect cellAt(int row, KeywordColumn column)
    {
        return table().visualRect(model().index(row, int(column)));
    }
    void scroll(int offset)
    {
        ASSERT_GE(sideways().maximum(), offset);
        sideways().setValue(offset);
        settle();
    }
    QStringList paintedAt(QWidget *viewport, const QRect &place)
    {
        QStringList texts;
        for (const PaintedText &painted : paintedTexts(viewport)) {
            if (place.contains(painted.rect.center().toPoint()))
                texts << painted.text;
        }
        return texts;
    }
    /// A press, a move and a release on the header.
    void drag(QPoint from, QPoint to)
    {
        QTest::mousePress(header().viewport(), Qt::LeftButton, {}, from);
        for (const int step : {1, 2, 3, 4}) {
            const QPointF at = from + QPointF(to - from) * step / 4.0;
            QMouseEvent move(QEvent::MouseMove, at, header().viewport()->mapToGlobal(at),
                             Qt::NoButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(header().viewport(), &move);
        }
        QTest::mouseRelease(header().viewport(), Qt::LeftButton, {}, to);
        settle();
    }
};

TEST_F(HeldColumnTest, StaysAtTheLeadingEdgeWithItsHeader)
{
    EXPECT_TRUE(header().heldRect().isEmpty()) << "in its own place";
    scroll(300);
    EXPECT_EQ(cellAt(1, KeywordColumn::Keyword).left(), 0);
    EXPECT_EQ(header().sectionRect(keyword), QRect(0, 0, width(), header().viewport()->height()));
    EXPECT_TRUE(paintedAt(table().viewport(), cellAt(1, KeywordColumn::Keyword))
                    .contains(QStringLiteral("collage maker")));
    EXPECT_EQ(paintedAt(header().viewport(), header().sectionRect(keyword)),
              QStringList{QStringLiteral("Keyword")});
    EXPECT_EQ(paintedTextProblems(&table()), QStringList());
    EXPECT_EQ(paintedHeaderProblems(&table()), QStringList());
    scroll(0);
    EXPECT_TRUE(header().heldRect().isEmpty());
}

TEST_F(HeldColumnTest, IsWhatAPointOverItMeans)
{
    scroll(300);
    const QPoint there = cellAt(2, KeywordColumn::Keyword).center();
    EXPECT_EQ(table().indexAt(there), model().index(2, keyword));
    EXPECT_EQ(table().indexAt({width() + 2, there.y()}).column(), table().columnAt(width() + 2));
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, there);
    EXPECT_EQ(table().selectedIds(), QList<QUuid>{model().entryAt(2).row.id});
    EXPECT_EQ(sideways().value(), 300) << "a click on it scrolls nowhere";
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(&table());
    const QPoint global = table().viewport()->mapToGlobal(there);
    EXPECT_TRUE(seen->childAt(global.x(), global.y())
                    ->text(QAccessible::Name)
                    .startsWith(model().entryAt(2).row.keyword));
}

TEST_F(HeldColumnTest, KeysMoveThroughTheRowsWithoutScrollingSideways)
{
    selectKeywords({QStringLiteral("bildbearbeitung")});
    scroll(300);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_PageDown);
    EXPECT_EQ(sideways().value(), 300);
    EXPECT_EQ(table().currentIndex().row(), model().rowCount() - 1);
}

TEST_F(HeldColumnTest, AColumnThatIsReachedByKeyComesOutFromBeneathIt)
{
    selectKeywords({QStringLiteral("bildbearbeitung")});
    table().setCurrentIndex(model().index(0, int(KeywordColumn::Difficulty)));
    scroll(400);
    press(Qt::Key_Left);
    ASSERT_EQ(table().currentIndex().column(), int(KeywordColumn::Popularity));
    EXPECT_GE(cellAt(0, KeywordColumn::Popularity).left(), width());
}

TEST_F(HeldColumnTest, IsFilledAsItsRowIs)
{
    scroll(300);
    table().QTableView::selectRow(3);
    QTest::mouseMove(window.get(), QPoint(2, 2));
    QTest::mouseMove(table().viewport(),
                     cellAt(5, KeywordColumn::Keyword).topLeft() + QPoint(20, 20));
    settle();
    const QRect buttons = find("rowMore")->parentWidget()->geometry();
    const QImage picture = table().viewport()->grab().toImage();
    for (const int row : {3, 5, 6}) {
        const QRect cell = cellAt(row, KeywordColumn::Keyword);
        const QColor inside = picture.pixelColor(cell.left() + 3, cell.top() + 4);
        const QColor outside = picture.pixelColor(cell.right() + 40, cell.top() + 4);
        EXPECT_EQ(inside.name().toStdString(), outside.name().toStdString()) << row;
    }
    EXPECT_EQ(buttons.right(), width() - 1 - spacing::s);
}

TEST_F(HeldColumnTest, ItsHeaderSortsByAClickAndTurnsTheOrder)
{
    scroll(300);
    const QPoint title(40, 10);
    QTest::mouseClick(header().viewport(), Qt::LeftButton, {}, title);
    EXPECT_EQ(model().sortedBy(), KeywordColumn::Keyword);
    EXPECT_EQ(model().sortOrder(), Qt::DescendingOrder);
    QTest::mouseClick(header().viewport(), Qt::LeftButton, {}, title);
    EXPECT_EQ(model().sortOrder(), Qt::AscendingOrder);
    EXPECT_EQ(sideways().value(), 300);
}

TEST_F(HeldColumnTest, ItsWidthIsDraggedWhereItIsSeen)
{
    scroll(300);
    const int before = width();
    drag({before - 2, 10}, {before + 28, 10});
    EXPECT_EQ(width(), before + 30);
    EXPECT_EQ(header().sectionRect(keyword).left(), 0);
}

TEST_F(HeldColumnTest, IsDraggedToAnotherPlaceAsTheOthersAre)
{
    scroll(300);
    drag({40, 10}, {width() + 200, 10});
    EXPECT_EQ(table().shownColumns().front(), KeywordColumn::Target);
    EXPECT_EQ(table().shownColumns().at(1), KeywordColumn::Keyword);
    EXPECT_EQ(header().heldRect(), QRect()) << "scrolled to its own place";
    scroll(sideways().maximum());
    EXPECT_EQ(cellAt(0, KeywordColumn::Keyword).left(), 0) << "held from there, too";
}

TEST_F(HeldColumnTest, OtherColumnsAreStillDragged)
{
    scroll(300);
    const int popularity = int(KeywordColumn::Popularity);
    const int end = header().sectionRect(popularity).right();
    drag({end - 1, 10}, {end + 19, 10});
    EXPECT_EQ(header().sectionSize(popularity), 280);
}

TEST_F(HeldColumnTest, OneWiderThanHalfOfTheTableScrollsAlong)
{
    header().resizeSection(keyword, table().viewport()->width() / 2 + 1);
    scroll(300);
    EXPECT_EQ(cellAt(0, KeywordColumn::Keyword).left(), -300);
    EXPECT_TRUE(header().heldRect().isEmpty());
}

TEST_F(HeldColumnTest, HoldsAtTheOtherEdgeWhereWritingRunsLeftwards)
{
    table().setLayoutDirection(Qt::RightToLeft);
    header().setLayoutDirection(Qt::RightToLeft);
    settle();
    scroll(300);
    const QRect cell = cellAt(1, KeywordColumn::Keyword);
    EXPECT_EQ(cell.right(), table().viewport()->width() - 1);
    EXPECT_EQ(table().indexAt(cell.center()), model().index(1, keyword));
}

} // namespace
} // namespace veltrix
