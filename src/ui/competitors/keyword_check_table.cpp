// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_check_table.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/theme/typography.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace veltrix
{

namespace
{

constexpr int standardControlHeight = 30;

} // namespace

KeywordCheckTable::KeywordCheckTable(KeywordCheckModel &model, QWidget *parent)
    : TallTable(model, RowHeight::OneLine, nullptr, parent), m_model(model)
{
    nameControl(this, QStringLiteral("keywordChecks"), tr("Keywords"));
    nameControl(&header(), QStringLiteral("keywordChecksHeader"), tr("Columns"));
    header().setSortIndicatorClearable(true);
    header().setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    setSelectionMode(NoSelection);
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
    TallTable::mouseReleaseEvent(event);
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
        TallTable::keyPressEvent(event);
}

} // namespace veltrix
