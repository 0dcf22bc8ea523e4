// SPDX-License-Identifier: GPL-3.0-or-later
// How far back the history is shown: a row of choices of which one is taken.
#pragma once

#include "ui/history/rank_history.h"

#include <QWidget>

class QButtonGroup;

namespace veltrix
{

class RangeControl final : public QWidget
{
    Q_OBJECT

public:
    /// Starts at HistoryRange::Days14.
    explicit RangeControl(QWidget *parent = nullptr);

    [[nodiscard]] HistoryRange range() const;
    void setRange(HistoryRange range);

Q_SIGNALS:
    void rangeChanged(HistoryRange range);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QButtonGroup *m_buttons;
};

} // namespace veltrix
