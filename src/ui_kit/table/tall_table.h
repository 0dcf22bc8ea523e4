// SPDX-License-Identifier: GPL-3.0-or-later
// A table as high as its rows, on a page that scrolls.
#pragma once

#include "ui_kit/table/row_table.h"

class QScrollArea;

namespace veltrix
{

/// Leaves scrolling to the page around it: the wheel, the pages of the keyboard, the way to the
/// current row, and the rows that are to stay in view when others come or go above them.
class TallTable : public RowTable
{
    Q_OBJECT

public:
    TallTable(RowModel &model, RowHeight rowHeight, ArtworkImages *images,
              QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void fontChanged() override;
    /// Gives the columns their widths; the table has another width or font.
    virtual void fitColumns() = 0;

private:
    /// The page around the table, which scrolls it; null while there is none.
    [[nodiscard]] QScrollArea *page() const;
    void rememberFirstRowInView();
    void keepFirstRowInView();

    const RowModel &m_rowModel;
    /// What is to stay where it is in view, and where it stood in the table.
    QPersistentModelIndex m_firstInView;
    int m_firstTop = 0;
};

} // namespace veltrix
