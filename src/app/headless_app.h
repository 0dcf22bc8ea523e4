// SPDX-License-Identifier: GPL-3.0-or-later
// The program without its window.
#pragma once

#include "headless/command_line.h"

namespace veltrix
{

class Bundle;

/// Measures without a window, or lets the process measure that has the data folder, and prints how
/// it goes. Asked to end by a signal, or by a start that wants the window, it ends with what was
/// measured until then. A QCoreApplication is there, and no display need be.
ExitStatus runHeadless(const MeasureCommand &command, const Bundle &bundle);

} // namespace veltrix
