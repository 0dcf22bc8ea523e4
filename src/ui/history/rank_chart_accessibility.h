// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking chart for screen readers: a chart whose checks are its children.
#pragma once

namespace veltrix
{

class RankChart;

/// Makes charts accessible; called by each, effective once.
void installRankChartAccessibility();

/// The chart's checks are about to be others.
void forgetRankChartAccessibility(RankChart &chart);

} // namespace veltrix
