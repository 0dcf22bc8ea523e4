// SPDX-License-Identifier: GPL-3.0-or-later
// The table of checked phrases: one click or the space bar chooses a row.
#pragma once

#include "ui/competitors/keyword_check_model.h"
#include "ui_kit/table/tall_table.h"

namespace veltrix
{

class KeywordCheckTable final : public TallTable
{
    Q_OBJECT

public:
    explicit KeywordCheckTable(KeywordCheckModel &model, QWidget *parent = nullptr);

    /// Whether there is an own app whose ranks are shown beside.
    void setOwnRankShown(bool isShown);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void fitColumns() override;
    [[nodiscard]] bool isMarked(int row) const override;
    [[nodiscard]] bool isPointable(int row) const override;

private:
    KeywordCheckModel &m_model;
};

} // namespace veltrix
