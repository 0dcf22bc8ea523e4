// SPDX-License-Identifier: GPL-3.0-or-later
// What measuring prints.
#pragma once

#include "headless/measure_messages.h"

namespace veltrix
{

/// The text without what would move a terminal's cursor or turn its text around.
QString printable(QString text);

/// "photo editor · US · Lumen Photo Editor: rank 12, ↑ 3", or why there is none. Without control
/// characters, whatever the App Store calls an app: it is written to terminals.
QString turnText(const MeasuredKeyword &turn);

/// "23 keywords measured, 1 not. 4 were measured today already."
QString summaryText(const MeasureSummary &summary);

/// "[3/24] photo editor".
QString progressText(const MeasureProgress &progress);

} // namespace veltrix
