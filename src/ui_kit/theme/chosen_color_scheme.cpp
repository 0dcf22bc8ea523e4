// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/chosen_color_scheme.h"

namespace veltrix
{

ChosenColorScheme::ChosenColorScheme(const ColorSchemeSource &desktop, ThemeChoice choice,
                                     QObject *parent)
    : ColorSchemeSource(parent), m_desktop(desktop), m_choice(choice)
{
    connect(&m_desktop, &ColorSchemeSource::colorSchemeChanged, this, [this] {
        if (m_choice == ThemeChoice::System)
            Q_EMIT colorSchemeChanged();
    });
}

void ChosenColorScheme::setChoice(ThemeChoice choice)
{
    const ColorScheme before = colorScheme();
    m_choice = choice;
    if (colorScheme() != before)
        Q_EMIT colorSchemeChanged();
}

ColorScheme ChosenColorScheme::colorScheme() const
{
    switch (m_choice) {
    case ThemeChoice::Light:
        return ColorScheme::Light;
    case ThemeChoice::Dark:
        return ColorScheme::Dark;
    case ThemeChoice::System:
        break;
    }
    return m_desktop.colorScheme();
}

} // namespace veltrix
