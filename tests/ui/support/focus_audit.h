// SPDX-License-Identifier: GPL-3.0-or-later
// What every screen is held to for those who do not use a mouse: the order of Tab, the look of the
// focus, and the reach of assistive technology.
#pragma once

#include <QStringList>
#include <QWidget>

namespace veltrix
{

/// What Tab reaches from where the focus is, in its order, once around. The window is active.
QList<QWidget *> tabStops(QWidget *window);

/// Neighbours in the order of Tab of which the second stands before the first: above it, or beside
/// it at the leading side. What scrolls is compared where it stands, not where it is scrolled to.
QStringList stopsOutOfOrder(const QList<QWidget *> &stops);

/// Stops that look the same with and without the focus.
QStringList stopsWithoutVisibleFocus(QWidget *window);

/// What assistive technology can press, write to or select in, or find, behind the sheet or popover
/// that is open over the window. Nothing while none is open.
QStringList reachableBehindSheet(QWidget *window);

} // namespace veltrix
