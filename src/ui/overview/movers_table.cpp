// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/overview/movers_table.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/theme/typography.h"

#include <algorithm>
#include <numeric>

namespace veltrix
{

MoversTable::MoversTable(MoversModel &model, ArtworkImages &images, QWidget *parent)
    : OpenableTable(model, RowHeight::OneLine, &images, parent), m_model(model)
{
    nameControl(this, QStringLiteral("movers"), tr("Movers"));
    nameControl(&header(), QStringLiteral("moversHeader"), tr("Columns"));
    header().setSortIndicator(m_model.sortColumn(), m_model.sortOrder());
    setSortingEnabled(true);
    setSelectionMode(ExtendedSelection);
    connect(this, &OpenableTable::rowOpened, this,
            [this](int row) { Q_EMIT opened(m_model.entryAt(row).id); });
}

void MoversTable::fitColumns()
{
    const int count = m_model.columnCount();
    std::vector<int> widths;
    for (int column = 0; column < count; ++column)
        widths.push_back(scaledToFont(m_model.defaultWidth(column), font()));
    const int room = viewport()->width();
    const auto excess = [&] {
        return std::accumulate(widths.begin(), widths.end(), 0) - room;
    };
    // What is given up first where there is no room.
    for (const MoverColumn column : {MoverColumn::Line, MoverColumn::Before}) {
        const bool isGivenUp = excess() > 0;
        if (isGivenUp)
            widths[size_t(column)] = 0;
        setColumnHidden(int(column), isGivenUp);
    }
    for (int column = count - 1; column > 0; --column) {
        int &width = widths[size_t(column)];
        if (width > 0)
            width = std::max(minimumWidth(column), width - std::max(0, excess()));
        if (width > 0)
            header().resizeSection(column, width);
    }
    fillWidth(int(MoverColumn::Keyword));
}

} // namespace veltrix
