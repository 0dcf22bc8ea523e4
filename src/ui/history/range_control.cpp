// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/range_control.h"

namespace veltrix
{

namespace
{

QList<SegmentedControl::Choice> choices()
{
    QList<SegmentedControl::Choice> choices;
    for (const HistoryRange range : allHistoryRanges)
        choices.append({rangeName(range), rangeTitle(range)});
    return choices;
}

} // namespace

RangeControl::RangeControl(QWidget *parent)
    : SegmentedControl(QStringLiteral("historyRange"), tr("Period"), QStringLiteral("historyRange"),
                       choices(), parent)
{
    connect(this, &SegmentedControl::changed, this,
            [this](int index) { Q_EMIT rangeChanged(static_cast<HistoryRange>(index)); });
}

HistoryRange RangeControl::range() const
{
    return static_cast<HistoryRange>(chosen());
}

void RangeControl::setRange(HistoryRange range)
{
    choose(int(range));
}

} // namespace veltrix
