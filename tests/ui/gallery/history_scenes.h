// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking history narrowed to some of its days, and in low windows.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> narrowedHistoryScenes();

} // namespace veltrix
