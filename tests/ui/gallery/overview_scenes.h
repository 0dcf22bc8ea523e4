// SPDX-License-Identifier: GPL-3.0-or-later
// The Overview with few apps and many, with movers and without.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> overviewScenes();

} // namespace veltrix
