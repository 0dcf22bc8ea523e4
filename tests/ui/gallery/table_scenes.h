// SPDX-License-Identifier: GPL-3.0-or-later
// The keyword table in daily use: several storefronts, narrow and large, and what was removed.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> tableScenes();

} // namespace veltrix
