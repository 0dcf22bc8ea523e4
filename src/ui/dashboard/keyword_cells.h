// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the cells of the keyword table that are more than one badge or figure.
#pragma once

#include "ui/dashboard/keyword_entry.h"
#include "ui_kit/table/cell_painting.h"

#include <QFontMetricsF>

namespace veltrix
{

/// Two lines of text in a keyword cell.
struct KeywordCellGeometry {
    QRectF title;
    /// Of the storefront behind the keyword; empty where it is not told.
    QRectF storefront;
    QRectF subtitle;
};

/// Keyword above, second line below, centred together. `titleWidth` is that of the keyword's text,
/// which gives way to the storefront; `storefront` is empty where it is not told.
KeywordCellGeometry layoutKeywordCell(const QRectF &content, const QFontMetricsF &title,
                                      const QFontMetricsF &subtitle, qreal titleWidth,
                                      const QSizeF &storefront);
/// The width of the whole content of a keyword cell. `base` is the body font.
qreal keywordCellWidth(const KeywordEntry &entry, const QFont &base);

/// The keyword and, below it, when it was measured or why it cannot be.
void paintKeywordCell(const CellPainting &cell, const KeywordEntry &entry);
/// `pending` stands in the place of a rank that was not measured yet.
void paintRankingCell(const CellPainting &cell, const KeywordEntry &entry, const QString &pending);
/// The top apps.
void paintAppsCell(const CellPainting &cell, const KeywordEntry &entry);

} // namespace veltrix
