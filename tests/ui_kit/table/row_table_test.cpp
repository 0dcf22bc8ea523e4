// SPDX-License-Identifier: GPL-3.0-or-later
// Rows that come and go move neither what is looked at nor what is selected.
#include "ui/support/ui_test.h"

#include "ui_kit/table/numbers_model.h"
#include "ui_kit/table/row_table.h"
#include "ui_kit/theme/typography.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>

namespace veltrix
{
namespace
{

class RowTableTest : public testing::Test
{
protected:
    RowTableTest()
    {
        testTheme().set(ColorScheme::Light);
        model.addTo(1000);
        table.resize(400, 300);
        table.show();
        QCoreApplication::processEvents();
    }

    void scrollTo(int row, int offset = 0)
    {
        table.verticalScrollBar()->setValue(row * table.rowHeight(0) + offset);
    }
    /// Where the row of an id stands in the view.
    int topOf(int id)
    {
        QCoreApplication::processEvents();
        return table.rowViewportPosition(model.rowOf(id));
    }
    std::vector<int> selectedIds()
    {
        std::vector<int> ids;
        for (const int row : table.selectedRows())
            ids.push_back(model.entryAt(row).id);
        return ids;
    }

    NumbersModel model;
    RowTable table{model, RowTable::RowHeight::OneLine, nullptr};
};

TEST_F(RowTableTest, ItsRowsAreAsHighAsTheFontAsks)
{
    EXPECT_EQ(table.rowHeight(0), oneLineRowHeight(table.font()));
    QFont large = table.font();
    large.setPixelSize(large.pixelSize() * 2);
    table.setFont(large);
    EXPECT_EQ(table.rowHeight(0), oneLineRowHeight(large));
}

TEST_F(RowTableTest, WhatIsLookedAtStaysWhenRowsAboveGo)
{
    scrollTo(500, 9);
    const int before = topOf(503);
    model.removeIf([](const NumberEntry &entry) { return entry.id < 500 && entry.id % 3 == 0; });
    EXPECT_EQ(topOf(503), before);
    model.addAll({{0, 0}, {3, 0}, {6, 0}});
    EXPECT_EQ(topOf(503), before);
}

TEST_F(RowTableTest, OfRowsThatGoTheNextInViewKeepsItsPlace)
{
    scrollTo(501);
    const int before = topOf(504);
    model.setDivisor(4);
    EXPECT_EQ(topOf(504), before);
    const int first = model.entryAt(table.rowAt(0)).id;
    const int place = topOf(first);
    model.setDivisor(1);
    EXPECT_EQ(topOf(first), place) << "and then the first in view";
}

TEST_F(RowTableTest, TheCurrentRowStaysInViewWhenASearchEnds)
{
    model.setDivisor(100);
    const QModelIndex chosen = model.index(model.rowOf(300), 0);
    table.selectionModel()->setCurrentIndex(chosen, QItemSelectionModel::SelectCurrent |
                                                        QItemSelectionModel::Rows);
    const int before = topOf(300);
    EXPECT_EQ(table.verticalScrollBar()->value(), 0);
    model.setDivisor(1);
    EXPECT_EQ(topOf(300), before);
    EXPECT_EQ(selectedIds(), std::vector{300});
    EXPECT_EQ(model.entryAt(table.currentIndex().row()).id, 300);
}

TEST_F(RowTableTest, AtTheTopItStaysAtTheTop)
{
    model.removeIf([](const NumberEntry &entry) { return entry.id == 0; });
    model.addAll({{0, 0}});
    EXPECT_EQ(topOf(0), 0);
}

TEST_F(RowTableTest, TheSelectionOutlivesAFilterAndASort)
{
    for (int id = 0; id < 1000; id += 10)
        table.selectionModel()->select(model.index(model.rowOf(id), 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
    model.setDivisor(20);
    EXPECT_EQ(selectedIds().size(), 50U);
    model.sort(int(NumberColumn::Number), Qt::DescendingOrder);
    model.setDivisor(1);
    auto ids = selectedIds();
    std::sort(ids.begin(), ids.end());
    ASSERT_EQ(ids.size(), 50U);
    for (size_t i = 0; i < ids.size(); ++i)
        EXPECT_EQ(ids[i], int(i) * 20);
}

TEST_F(RowTableTest, CopiesWhatIsSelectedInTheOrderOnScreen)
{
    table.horizontalHeader()->moveSection(1, 0);
    table.selectRow(3);
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              QStringLiteral("Number\tName\tId\n%1\tname 3\t3\n").arg(3 * 7919 % 1000));
    table.setColumnHidden(1, true);
    EXPECT_EQ(table.shownTexts().size(), 1001);
    EXPECT_EQ(table.shownTexts()[0], (QStringList{QStringLiteral("Name"), QStringLiteral("Id")}));
}

TEST_F(RowTableTest, ATableInWhichNothingCanBeSelectedIsCopiedWhole)
{
    table.setSelectionMode(QAbstractItemView::NoSelection);
    model.setDivisor(500);
    table.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(u'\n'), 3);
}

TEST_F(RowTableTest, TheColumnAlignsItsCellsAndItsHeader)
{
    table.setColumnWidth(0, 120);
    table.setColumnWidth(1, 200);
    QCoreApplication::processEvents();
    const auto firstInk = [](const QImage &picture, int y0, int y1, int x0, int x1) {
        for (int x = x0; x < x1; ++x) {
            for (int y = y0; y < y1; ++y) {
                if (qGray(picture.pixel(x, y)) < 100)
                    return x;
            }
        }
        return x1;
    };
    const QImage cells = table.viewport()->grab().toImage();
    const int top = table.rowViewportPosition(2);
    const int bottom = top + table.rowHeight(2) - 2;
    EXPECT_LT(firstInk(cells, top, bottom, 0, 120), 30);
    EXPECT_GT(firstInk(cells, top, bottom, 120, 320), 280);
    const QImage header = table.horizontalHeader()->viewport()->grab().toImage();
    EXPECT_LT(firstInk(header, 1, header.height() - 3, 0, 120), 30);
    EXPECT_GT(firstInk(header, 1, header.height() - 3, 120, 320), 240);
}

} // namespace
} // namespace veltrix
