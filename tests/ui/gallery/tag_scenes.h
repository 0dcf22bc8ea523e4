// SPDX-License-Identifier: GPL-3.0-or-later
// Tags: in the table, as a filter, being edited, and in a field of their own.
#pragma once

#include "ui/gallery/scenes.h"

namespace veltrix
{

std::vector<Scene> tagScenes();

} // namespace veltrix
