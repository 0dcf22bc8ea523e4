// SPDX-License-Identifier: GPL-3.0-or-later
// Adding and importing keywords, and adding apps.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> keywordScenes();

} // namespace veltrix
