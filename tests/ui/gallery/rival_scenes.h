// SPDX-License-Identifier: GPL-3.0-or-later
// The page of a tracked competitor, and who is above the user's app.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> rivalScenes();

} // namespace veltrix
