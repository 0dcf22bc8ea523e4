// SPDX-License-Identifier: GPL-3.0-or-later
// The scheme that the user chose, or that of the desktop.
#pragma once

#include "ui_kit/theme/color_scheme_source.h"
#include "ui_kit/theme/theme_choice.h"

namespace veltrix
{

/// The desktop's scheme, unless the user wants one whatever the desktop has.
class ChosenColorScheme final : public ColorSchemeSource
{
    Q_OBJECT

public:
    /// `desktop` outlives this.
    ChosenColorScheme(const ColorSchemeSource &desktop, ThemeChoice choice,
                      QObject *parent = nullptr);

    void setChoice(ThemeChoice choice);
    [[nodiscard]] ColorScheme colorScheme() const override;

private:
    const ColorSchemeSource &m_desktop;
    ThemeChoice m_choice;
};

} // namespace veltrix
