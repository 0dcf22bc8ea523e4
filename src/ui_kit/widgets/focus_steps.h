// SPDX-License-Identifier: GPL-3.0-or-later
// Lists of rows and cards move by the arrows, PageUp, PageDown, Home and End, as item views do.
#pragma once

#include <QList>
#include <Qt>

#include <optional>

class QKeyEvent;
class QWidget;

namespace veltrix
{

/// Which of `count` entries a key leads to from entry `from`, when that many stand abreast (at
/// least 1) and a page has that many rows (at least 1). No value for other keys, and where there is
/// nothing further in that direction. Left and right are as they are seen.
std::optional<int> stepIn(int count, int from, Qt::Key key, int abreast, int pageRows,
                          Qt::LayoutDirection direction = Qt::LeftToRight);

/// Moves the focus among `entries`, which stand in this order and `abreast` in a row. An entry, or
/// the control in it that had its focus last or could have it, is scrolled into view and gets it.
/// False when the key is for somebody else.
bool moveFocusAmong(const QList<QWidget *> &entries, const QKeyEvent &event, int abreast = 1);

/// Puts widgets that have come later, and the controls in them, into the order of Tab where the
/// `place` stands that holds them.
void putInTabOrder(const QWidget &place, const QList<QWidget *> &widgets);

} // namespace veltrix
