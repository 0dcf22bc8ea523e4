// SPDX-License-Identifier: GPL-3.0-or-later
// A table of whole rows: hovered, marked, ringed, parted by hairlines, read, copied.
#pragma once

#include "ui_kit/table/row_model.h"
#include "ui_kit/theme/tokens.h"

#include <QTableView>

namespace veltrix
{

class ArtworkImages;
class TableHeader;

/// Shows a RowModel through its registry of columns: the model gives each cell's painter and text.
/// When rows come or go, what the user looks at stays where it is.
class RowTable : public QTableView
{
    Q_OBJECT

public:
    enum class RowHeight { OneLine, TwoLines };

    /// `images` may be null for columns that paint none.
    RowTable(RowModel &model, RowHeight rowHeight, ArtworkImages *images,
             QWidget *parent = nullptr);
    ~RowTable() override;

    /// Selected rows from top to bottom.
    [[nodiscard]] std::vector<int> selectedRows() const;
    /// Every row as text, with a header line: the columns shown, in their order on screen.
    [[nodiscard]] QList<QStringList> shownTexts() const;
    /// Copies the selected rows with their headers as tab-separated text; every row of a table in
    /// which none can be selected.
    void copy() const;

    [[nodiscard]] QModelIndex indexAt(const QPoint &position) const override;
    [[nodiscard]] QRect visualRect(const QModelIndex &index) const override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

    /// Whether a row is filled as one that was chosen.
    [[nodiscard]] virtual bool isMarked(int row) const;
    /// Whether a row answers to the pointer.
    [[nodiscard]] virtual bool isPointable(int row) const;
    /// Pixels at the end of a cell that something else covers.
    [[nodiscard]] virtual qreal coveredEnd(const QModelIndex &index) const;
    /// Where rows lie, which one the pointer is over or which one is current may be another.
    virtual void rowsPlaced();

    /// The row under the pointer, or -1.
    [[nodiscard]] int hoveredRow() const { return m_hoveredRow; }
    void setHoveredRow(int row);
    [[nodiscard]] TableHeader &header() const { return *m_header; }
    /// Columns shown, in their order on screen.
    [[nodiscard]] std::vector<int> shownSections() const;
    /// Keeps a column in view at the leading edge while the others scroll sideways beneath it.
    void holdColumn(int column);
    /// Gives a column what the others leave of the table's width and `excess` pixels more, at least
    /// its minimum.
    void fillWidth(int column, int excess = 0);
    [[nodiscard]] QRect rowRect(int row) const;
    /// Where a cell is painted: without the padding at its sides and without what covers its end.
    [[nodiscard]] QRectF contentOf(const QModelIndex &index) const;
    /// Pixels at the table's font.
    [[nodiscard]] int minimumWidth(int column) const;
    /// The table has another font, its rows and header too.
    virtual void fontChanged();

private:
    class CellDelegate;

    /// A row that is in view, and where.
    struct SeenRow {
        QPersistentModelIndex index;
        int top = 0;
    };

    void applyRowHeight();
    void hoverUnderPointer();
    [[nodiscard]] Token fillOf(int row) const;
    /// Where the held column lies over others; else empty.
    [[nodiscard]] QRect heldArea() const;
    /// The ground of the rows in `area`, from its left to its right end.
    void paintRows(QPainter &painter, const QRect &area);
    void paintHeldColumn(const QRect &area);
    void paintFocus();
    void rememberSeenRows();
    void keepSeenRows();

    RowModel &m_model;
    RowHeight m_rowHeight;
    ArtworkImages *m_images;
    TableHeader *m_header;
    int m_hoveredRow = -1;
    /// What of the rows in view is to stay where it is, the most wanted first.
    std::vector<SeenRow> m_seen;
    bool m_wasAtTop = true;
};

} // namespace veltrix
