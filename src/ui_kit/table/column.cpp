// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/column.h"

#include <QPainter>

namespace veltrix
{

int compare(const ColumnSortKey &left, const ColumnSortKey &right, Qt::SortOrder order)
{
    if (left.group != right.group)
        return left.group < right.group ? -1 : 1;
    int natural = 0;
    if (left.text && right.text)
        natural = left.text->compare(*right.text);
    else if (left.number != right.number)
        natural = left.number < right.number ? -1 : 1;
    return order == Qt::AscendingOrder ? natural : -natural;
}

void paintCellText(const CellPainting &cell, const QRectF &rect, const QString &text,
                   const QFont &font, const QColor &color)
{
    cell.painter.setFont(font);
    cell.painter.setPen(color);
    cell.painter.drawText(rect,
                          int(QStyle::visualAlignment(cell.option.direction, cell.alignment)) |
                              Qt::TextSingleLine,
                          QFontMetricsF(font).elidedText(text, Qt::ElideRight, rect.width()));
}

} // namespace veltrix
