// SPDX-License-Identifier: GPL-3.0-or-later
// Suggestions beyond a keyword, and ideas out of competitors' listings.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> suggestionScenes();

} // namespace veltrix
