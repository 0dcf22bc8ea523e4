// SPDX-License-Identifier: GPL-3.0-or-later
// Exporting without a window.
#pragma once

#include "headless/command_line.h"

namespace veltrix
{

class Bundle;

/// Exports what the data folder has, or what the process tells that has the folder, and says on
/// standard error why it could not. Asked to end by a signal, it writes nothing; a window that is
/// opened meanwhile takes over. A QCoreApplication is there, and no display need be.
ExitStatus runExport(const ExportCommand &command, const Bundle &bundle);

} // namespace veltrix
