// SPDX-License-Identifier: GPL-3.0-or-later
// Gives the whole program its style, font and palette, and keeps the palette with the desktop's.
#pragma once

#include "ui_kit/theme/color_scheme_source.h"

#include <QFont>

namespace veltrix
{

/// Create one after the QApplication. Everything that is painted takes its colours from the palette
/// and its sizes from the font that this sets.
class ThemeController final : public QObject
{
    Q_OBJECT

public:
    explicit ThemeController(ColorSchemeSource &source, QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void applyPalette();
    void applyFont();

    ColorSchemeSource &m_source;
    QFont m_appliedFont;
};

} // namespace veltrix
