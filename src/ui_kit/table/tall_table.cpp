// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/tall_table.h"

#include "ui_kit/table/table_header.h"

#include <QCoreApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace veltrix
{

TallTable::TallTable(RowModel &model, RowHeight rowHeight, ArtworkImages *images, QWidget *parent)
    : RowTable(model, rowHeight, images, parent), m_rowModel(model)
{
    header().setSectionsMovable(false);
    header().setMinimumSectionSize(20);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    const auto resized = [this] {
        updateGeometry();
    };
    connect(&model, &QAbstractItemModel::rowsInserted, this, resized);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, resized);
    connect(&model, &QAbstractItemModel::modelReset, this, resized);
    connect(&model, &RowModel::rowsAboutToDiffer, this, &TallTable::rememberFirstRowInView);
    connect(&model, &RowModel::rowsDiffer, this, &TallTable::keepFirstRowInView);
}

void TallTable::rememberFirstRowInView()
{
    m_firstInView = QPersistentModelIndex();
    const QScrollArea *around = page();
    if (!around)
        return;
    const int top = viewport()->mapFrom(around->viewport(), QPoint(0, 0)).y();
    // While something above the table is in view, that is what stays.
    if (top > 0)
        m_firstInView = m_rowModel.index(rowAt(top), 0);
    m_firstTop = m_firstInView.isValid() ? rowRect(m_firstInView.row()).top() : 0;
}

void TallTable::keepFirstRowInView()
{
    QScrollArea *around = page();
    const QPersistentModelIndex first = std::exchange(m_firstInView, QPersistentModelIndex());
    if (!around || !first.isValid())
        return;
    const int before = m_firstTop;
    // The page has to be as high as it will be, or it cannot be scrolled so far.
    updateGeometry();
    for (QWidget *widget = this; widget && widget != around; widget = widget->parentWidget())
        QCoreApplication::sendPostedEvents(widget, QEvent::LayoutRequest);
    QScrollBar &bar = *around->verticalScrollBar();
    bar.setValue(bar.value() + rowRect(first.row()).top() - before);
}

QSize TallTable::sizeHint() const
{
    return {400, header().sizeHint().height() +
                     m_rowModel.rowCount() * verticalHeader()->defaultSectionSize()};
}

QSize TallTable::minimumSizeHint() const
{
    return {260, sizeHint().height()};
}

void TallTable::resizeEvent(QResizeEvent *event)
{
    RowTable::resizeEvent(event);
    fitColumns();
}

void TallTable::fontChanged()
{
    fitColumns();
    updateGeometry();
}

QScrollArea *TallTable::page() const
{
    for (QWidget *around = parentWidget(); around; around = around->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(around))
            return area;
    }
    return nullptr;
}

QModelIndex TallTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QScrollArea *around = page();
    if (!around || (action != MovePageUp && action != MovePageDown))
        return RowTable::moveCursor(action, modifiers);
    // The table shows all of its rows; a page is what can be seen of them.
    const int rows =
        std::max(1, around->viewport()->height() / verticalHeader()->defaultSectionSize() - 1);
    const int from = std::max(0, currentIndex().row());
    const int to = action == MovePageDown ? from + rows : from - rows;
    return m_rowModel.index(std::clamp(to, 0, m_rowModel.rowCount() - 1),
                            std::max(0, currentIndex().column()));
}

void TallTable::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    RowTable::currentChanged(current, previous);
    QScrollArea *around = page();
    if (!around || !hasFocus() || !current.isValid())
        return;
    const QRect row = rowRect(current.row());
    const QPoint middle = viewport()->mapTo(around->widget(), row.center());
    around->ensureVisible(middle.x(), middle.y(), 0, row.height());
}

void TallTable::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace veltrix
