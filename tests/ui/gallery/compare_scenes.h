// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking history beside those of competitors, with notes and noticed changes.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> compareScenes();

} // namespace veltrix
