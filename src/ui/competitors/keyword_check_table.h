// SPDX-License-Identifier: GPL-3.0-or-later
// The table of checked phrases: one click or the space bar chooses a row.
#pragma once

#include "ui/competitors/keyword_check_model.h"
#include "ui_kit/table/row_table.h"

class QScrollArea;

namespace veltrix
{

/// As high as its rows: the page around it scrolls.
class KeywordCheckTable final : public RowTable
{
    Q_OBJECT

public:
    explicit KeywordCheckTable(KeywordCheckModel &model, QWidget *parent = nullptr);

    /// Whether there is an own app whose ranks are shown beside.
    void setOwnRankShown(bool isShown);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] bool isMarked(int row) const override;
    [[nodiscard]] bool isPointable(int row) const override;

private:
    void fitColumns();
    /// The page around the table, which scrolls it; null while there is none.
    [[nodiscard]] QScrollArea *page() const;

    KeywordCheckModel &m_model;
};

} // namespace veltrix
