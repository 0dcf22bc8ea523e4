// SPDX-License-Identifier: GPL-3.0-or-later
// Listings with something odd about them, and pages over pages.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> listingScenes();

} // namespace veltrix
