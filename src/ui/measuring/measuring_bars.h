// SPDX-License-Identifier: GPL-3.0-or-later
// The banner over the workspaces and the line under them, which show a MeasuringStatus.
#pragma once

#include "ui/measuring/measuring_status.h"

namespace veltrix
{

class ASOStore;
class Banner;

/// The last failure, with "Refresh". Hidden while there is none.
[[nodiscard]] Banner *makeRefreshBanner(MeasuringStatus &status);
/// What was done, and what is being measured with "Stop".
[[nodiscard]] StatusBar *makeStatusBar(MeasuringStatus &status);
/// Says in that line how far the days of a large state file have moved to the history, where that
/// takes seconds.
void sayHistoryMoves(const ASOStore &store, MeasuringStatus &status);

} // namespace veltrix
