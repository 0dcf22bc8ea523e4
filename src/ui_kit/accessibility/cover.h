// SPDX-License-Identifier: GPL-3.0-or-later
// What lies behind a sheet is out of the reach of assistive technology, as it is out of the reach
// of mouse and keyboard.
#pragma once

#include <QWidget>

class QAccessibleInterface;

namespace veltrix
{

/// Lays `cover`, a child of `window`, over everything else in it; null takes the cover away. What
/// is covered has no name, no children and no actions, and reads as disabled. References that
/// assistive technology holds from before end as soon as control returns to the event loop.
void setCover(QWidget *window, QWidget *cover);

/// What lies over the contents of that window, or null.
[[nodiscard]] QWidget *coverOf(const QWidget *window);
/// True for what is in a window with a cover, but not in the cover.
[[nodiscard]] bool isCovered(const QWidget *widget);

/// What assistive technology sees of a covered widget.
[[nodiscard]] QAccessibleInterface *makeCoveredInterface(QWidget *widget);

} // namespace veltrix
