// SPDX-License-Identifier: GPL-3.0-or-later
// The texts that a widget paints by itself, where no label can be asked.
#pragma once

#include <QAbstractItemView>
#include <QRectF>
#include <QStringList>
#include <QTableView>

#include <vector>

namespace veltrix
{

struct PaintedText {
    QString text;
    /// From the top of its letters to their bottom, in the widget's coordinates.
    QRectF rect;
};

/// What the widget alone, without its children, paints as text; in the order of painting.
std::vector<PaintedText> paintedTexts(QWidget *widget);

/// Texts of a view's visible cells that reach out of their cell, lie over each other or under a
/// widget, or are shortened without a tool tip that tells them whole.
QStringList paintedTextProblems(QAbstractItemView *view);
/// The same for the sections of a table's header.
QStringList paintedHeaderProblems(QTableView *table);

} // namespace veltrix
