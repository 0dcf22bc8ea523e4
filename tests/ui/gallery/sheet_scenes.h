// SPDX-License-Identifier: GPL-3.0-or-later
// The sheets and the Competitors workspace in every state.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> sheetScenes();
std::vector<Scene> competitorScenes();
/// Keywords tracked from the page of a researched app.
std::vector<Scene> trackingScenes();

} // namespace veltrix
