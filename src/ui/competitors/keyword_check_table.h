// SPDX-License-Identifier: GPL-3.0-or-later
// The table of checked phrases: one click or the space bar chooses a row.
#pragma once

#include "ui/competitors/keyword_check_model.h"
#include "ui_kit/table/row_table.h"

namespace veltrix
{

/// As high as its rows: the page around it scrolls.
class KeywordCheckTable final : public RowTable
{
    Q_OBJECT

public:
    explicit KeywordCheckTable(KeywordCheckModel &model, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    [[nodiscard]] bool isMarked(int row) const override;
    [[nodiscard]] bool isPointable(int row) const override;

private:
    void fitColumns();

    KeywordCheckModel &m_model;
};

} // namespace veltrix
