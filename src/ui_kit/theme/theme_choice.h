// SPDX-License-Identifier: GPL-3.0-or-later
// Light, dark, or as the desktop is.
#pragma once

namespace veltrix
{

enum class ThemeChoice {
    /// As the desktop is, now and when it changes.
    System,
    Light,
    Dark,
};

} // namespace veltrix
