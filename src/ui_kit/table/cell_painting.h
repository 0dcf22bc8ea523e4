// SPDX-License-Identifier: GPL-3.0-or-later
// What a cell of a row table is painted with.
#pragma once

#include "ui_kit/theme/tokens.h"

#include <QFont>
#include <QRectF>
#include <QStyleOptionViewItem>

#include <functional>

class QPainter;

namespace veltrix
{

class ArtworkImages;

struct CellPainting {
    QPainter &painter;
    const QStyleOptionViewItem &option;
    const Tokens &tokens;
    /// The cell without the padding at its sides and without what lies over its end.
    QRectF content;
    /// How the column aligns its cells.
    Qt::Alignment alignment;
    /// What the row is filled with.
    QColor under;
    /// Null in a table without artwork.
    ArtworkImages *images = nullptr;

    /// The body font.
    [[nodiscard]] const QFont &base() const { return option.font; }
};

/// The painter of one cell, which knows its column and its entry. It must not outlive the row.
using CellPainter = std::function<void(const CellPainting &cell)>;

/// One line of text in `rect`, elided at its end, aligned as the column says.
void paintCellText(const CellPainting &cell, const QRectF &rect, const QString &text,
                   const QFont &font, const QColor &color);

} // namespace veltrix
