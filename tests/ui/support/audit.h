// SPDX-License-Identifier: GPL-3.0-or-later
// What every screen is held to: named controls, whole texts, contrast.
#pragma once

#include <QStringList>
#include <QWidget>

namespace veltrix
{

/// Visible controls that a screen reader or a test could not name.
QStringList unnamedControls(QWidget *root);

/// Visible texts that do not fit into their widgets.
QStringList clippedTexts(QWidget *root);

/// Texts of labels whose contrast with what is painted around them is below 4.5, or 3 for large
/// text. The background is the colour that most pixels of the label have.
QStringList faintTexts(QWidget *root);

} // namespace veltrix
