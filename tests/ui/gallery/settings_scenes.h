// SPDX-License-Identifier: GPL-3.0-or-later
// The settings of measuring every day in every state.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> settingsScenes();

} // namespace veltrix
