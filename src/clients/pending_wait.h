// SPDX-License-Identifier: GPL-3.0-or-later
// Waits that a wrong clock cannot make endless.
#pragma once

#include "model/date.h"

namespace veltrix
{

/// Whether a wait until `moment` still holds that was begun to last `longest` at the most. One that
/// ends further ahead was begun under a clock that has been set back since, and holds no more.
inline bool isPending(Date moment, Date now, Seconds longest)
{
    return moment > now && moment <= now + longest;
}

} // namespace veltrix
