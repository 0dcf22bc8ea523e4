// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/above_you_table.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/theme/typography.h"

#include <algorithm>

namespace veltrix
{

AboveYouTable::AboveYouTable(AboveYouModel &model, ArtworkImages &images, QWidget *parent)
    : OpenableTable(model, RowHeight::OneLine, &images, parent), m_model(model)
{
    nameControl(this, QStringLiteral("aboveYou"), tr("Apps above yours"));
    nameControl(&header(), QStringLiteral("aboveYouHeader"), tr("Columns"));
    header().setSortIndicator(m_model.sortColumn(), m_model.sortOrder());
    setSortingEnabled(true);
    setSelectionMode(SingleSelection);
}

const AppAbove *AboveYouTable::current() const
{
    return currentIndex().isValid() ? &m_model.entryAt(currentIndex().row()).app : nullptr;
}

void AboveYouTable::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    OpenableTable::currentChanged(current, previous);
    Q_EMIT currentAppChanged();
}

void AboveYouTable::fitColumns()
{
    int excess = minimumWidth(int(AboveColumn::App)) - viewport()->width();
    for (int column = 0; column < m_model.columnCount(); ++column) {
        if (column != int(AboveColumn::App))
            excess += scaledToFont(m_model.defaultWidth(column), font());
    }
    // What is given up first where there is no room.
    for (const AboveColumn column : {AboveColumn::Change, AboveColumn::Tracked}) {
        const bool isGivenUp = excess > scaledToFont(m_model.defaultWidth(int(column)), font()) / 2;
        setColumnHidden(int(column), isGivenUp);
        if (isGivenUp)
            excess -= scaledToFont(m_model.defaultWidth(int(column)), font());
    }
    for (int column = m_model.columnCount() - 1; column >= 0; --column) {
        if (column == int(AboveColumn::App) || isColumnHidden(column))
            continue;
        const int wanted = scaledToFont(m_model.defaultWidth(column), font());
        const int width = std::max(minimumWidth(column), wanted - std::max(0, excess));
        excess -= wanted - width;
        header().resizeSection(column, width);
    }
    fillWidth(int(AboveColumn::App));
}

} // namespace veltrix
