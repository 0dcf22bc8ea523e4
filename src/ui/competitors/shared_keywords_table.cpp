// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/shared_keywords_table.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/table/table_header.h"
#include "ui_kit/theme/typography.h"

#include <algorithm>

namespace veltrix
{

SharedKeywordsTable::SharedKeywordsTable(SharedKeywordsModel &model, ArtworkImages &images,
                                         QWidget *parent)
    : OpenableTable(model, RowHeight::OneLine, &images, parent), m_model(model)
{
    nameControl(this, QStringLiteral("sharedKeywords"), tr("Where both rank"));
    nameControl(&header(), QStringLiteral("sharedKeywordsHeader"), tr("Columns"));
    header().setSortIndicator(m_model.sortColumn(), m_model.sortOrder());
    setSortingEnabled(true);
    setSelectionMode(ExtendedSelection);
}

void SharedKeywordsTable::fitColumns()
{
    int excess = minimumWidth(int(SharedColumn::Keyword)) - viewport()->width();
    for (const SharedColumn column :
         {SharedColumn::OwnRank, SharedColumn::TheirRank, SharedColumn::Leads})
        excess += scaledToFont(m_model.defaultWidth(int(column)), font());
    for (const SharedColumn column :
         {SharedColumn::Leads, SharedColumn::TheirRank, SharedColumn::OwnRank}) {
        const int wanted = scaledToFont(m_model.defaultWidth(int(column)), font());
        const int width = std::max(minimumWidth(int(column)), wanted - std::max(0, excess));
        excess -= wanted - width;
        header().resizeSection(int(column), width);
    }
    fillWidth(int(SharedColumn::Keyword));
}

} // namespace veltrix
