// SPDX-License-Identifier: GPL-3.0-or-later
// The shell where there is little room or much to show.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> shellRoomScenes();

} // namespace veltrix
