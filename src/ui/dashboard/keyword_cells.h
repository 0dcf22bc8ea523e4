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
    QRectF subtitle;
};

/// Keyword above, second line below, centred together.
KeywordCellGeometry layoutKeywordCell(const QRectF &content, const QFontMetricsF &title,
                                      const QFontMetricsF &subtitle);

/// The keyword and, below it, when it was measured or why it cannot be.
void paintKeywordCell(const CellPainting &cell, const KeywordEntry &entry);
/// `pending` stands in the place of a rank that was not measured yet.
void paintRankingCell(const CellPainting &cell, const KeywordEntry &entry, const QString &pending);
/// The top apps.
void paintAppsCell(const CellPainting &cell, const KeywordEntry &entry);

} // namespace veltrix
