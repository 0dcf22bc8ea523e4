// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the cells of the keyword table.
#pragma once

#include "ui/dashboard/keyword_column.h"
#include "ui_kit/theme/tokens.h"

#include <QFontMetricsF>
#include <QStyledItemDelegate>

namespace veltrix
{

class ArtworkImages;

/// Two lines of text in a keyword cell.
struct KeywordCellGeometry {
    QRectF title;
    QRectF subtitle;
};

/// The content of a cell: its rectangle without the padding at the sides.
QRectF cellContent(const QRectF &cell);

/// Keyword above, second line below, centred together; `reserved` pixels at the trailing end are
/// left to the row's buttons.
KeywordCellGeometry layoutKeywordCell(const QRectF &content, const QFontMetricsF &title,
                                      const QFontMetricsF &subtitle, qreal reserved);

class KeywordDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit KeywordDelegate(ArtworkImages &images, QObject *parent = nullptr);

    /// The row whose buttons are shown, and how much room they take.
    void setButtonsAt(int row, qreal reserved);
    /// The row under the pointer, or -1.
    void setHoveredRow(int row) { m_hoveredRow = row; }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override;

    /// Side of an icon in the "Apps" column.
    static qreal iconSize(const QFont &body);

private:
    void paintKeyword(QPainter &painter, const QRectF &content, const KeywordEntry &entry,
                      const QString &updated, const Tokens &tokens, const QFont &base,
                      qreal reserved) const;
    void paintRanking(QPainter &painter, const QRectF &content, const KeywordEntry &entry,
                      const Tokens &tokens, const QFont &base) const;

    ArtworkImages &m_images;
    int m_buttonsRow = -1;
    qreal m_reserved = 0;
    int m_hoveredRow = -1;
};

} // namespace veltrix
