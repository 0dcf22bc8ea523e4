// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_check_table.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/theme/typography.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollArea>
#include <QWheelEvent>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int standardControlHeight = 30;

} // namespace

KeywordCheckTable::KeywordCheckTable(KeywordCheckModel &model, QWidget *parent)
    : RowTable(model, RowHeight::OneLine, nullptr, parent), m_model(model)
{
    nameControl(this, QStringLiteral("keywordChecks"), tr("Keywords"));
    nameControl(&header(), QStringLiteral("keywordChecksHeader"), tr("Columns"));
    header().setSectionsMovable(false);
    header().setMinimumSectionSize(20);
    header().setSortIndicatorClearable(true);
    header().setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    setSelectionMode(NoSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    viewport()->setAutoFillBackground(false);
    const auto resized = [this] {
        updateGeometry();
    };
    connect(&m_model, &QAbstractItemModel::rowsInserted, this, resized);
    connect(&m_model, &QAbstractItemModel::modelReset, this, resized);
}

QSize KeywordCheckTable::sizeHint() const
{
    return {400, header().sizeHint().height() +
                     m_model.rowCount() * verticalHeader()->defaultSectionSize()};
}

QSize KeywordCheckTable::minimumSizeHint() const
{
    return {260, sizeHint().height()};
}

void KeywordCheckTable::setOwnRankShown(bool isShown)
{
    setColumnHidden(int(CheckColumn::OwnRank), !isShown);
    fitColumns();
}

void KeywordCheckTable::fitColumns()
{
    for (const CheckColumn column :
         {CheckColumn::Chosen, CheckColumn::Rank, CheckColumn::OwnRank, CheckColumn::Difficulty})
        header().resizeSection(int(column), m_model.defaultWidth(int(column)) *
                                                controlHeight(font()) / standardControlHeight);
    fillWidth(int(CheckColumn::Keyword));
}

void KeywordCheckTable::resizeEvent(QResizeEvent *event)
{
    RowTable::resizeEvent(event);
    fitColumns();
}

void KeywordCheckTable::changeEvent(QEvent *event)
{
    RowTable::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    fitColumns();
    updateGeometry();
}

bool KeywordCheckTable::isMarked(int row) const
{
    return m_model.entryAt(row).isChosen;
}

bool KeywordCheckTable::isPointable(int row) const
{
    return !m_model.entryAt(row).isTracked;
}

void KeywordCheckTable::mouseReleaseEvent(QMouseEvent *event)
{
    RowTable::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid())
        m_model.toggle(index.row());
}

void KeywordCheckTable::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && currentIndex().isValid())
        m_model.toggle(currentIndex().row());
    else if (event->matches(QKeySequence::SelectAll))
        m_model.chooseAll();
    else
        RowTable::keyPressEvent(event);
}

QScrollArea *KeywordCheckTable::page() const
{
    for (QWidget *around = parentWidget(); around; around = around->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(around))
            return area;
    }
    return nullptr;
}

QModelIndex KeywordCheckTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QScrollArea *around = page();
    if (!around || (action != MovePageUp && action != MovePageDown))
        return RowTable::moveCursor(action, modifiers);
    // The table shows all of its rows; a page is what can be seen of them.
    const int rows =
        std::max(1, around->viewport()->height() / verticalHeader()->defaultSectionSize() - 1);
    const int from = std::max(0, currentIndex().row());
    const int to = action == MovePageDown ? from + rows : from - rows;
    return m_model.index(std::clamp(to, 0, m_model.rowCount() - 1),
                         std::max(0, currentIndex().column()));
}

void KeywordCheckTable::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    RowTable::currentChanged(current, previous);
    QScrollArea *around = page();
    if (!around || !hasFocus() || !current.isValid())
        return;
    const QRect row = rowRect(current.row());
    const QPoint middle = viewport()->mapTo(around->widget(), row.center());
    around->ensureVisible(middle.x(), middle.y(), 0, row.height());
}

void KeywordCheckTable::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace veltrix
