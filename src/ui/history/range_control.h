// SPDX-License-Identifier: GPL-3.0-or-later
// How far back the history is shown: a row of choices of which one is taken.
#pragma once

#include "ui/history/rank_history.h"
#include "ui_kit/widgets/segmented_control.h"

namespace veltrix
{

class RangeControl final : public SegmentedControl
{
    Q_OBJECT

public:
    /// Starts at HistoryRange::Days14.
    explicit RangeControl(QWidget *parent = nullptr);

    [[nodiscard]] HistoryRange range() const;
    void setRange(HistoryRange range);

Q_SIGNALS:
    void rangeChanged(HistoryRange range);
};

} // namespace veltrix
