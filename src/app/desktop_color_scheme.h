// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop's light or dark preference, as it is now and as it changes.
#pragma once

#include "ui_kit/theme/color_scheme_source.h"

#include <QDBusVariant>
#include <QVariant>

#include <optional>

namespace veltrix
{

/// Reads the preference that desktops publish through their settings portal, and follows it. Where
/// no portal answers, or it has no preference, the palette that the desktop gave the program
/// decides, so create this before the program sets a palette of its own.
class DesktopColorScheme final : public ColorSchemeSource
{
    Q_OBJECT

public:
    explicit DesktopColorScheme(QObject *parent = nullptr);

    [[nodiscard]] ColorScheme colorScheme() const override;

    /// The meaning of the portal's value: 1 prefers dark, 2 light, anything else has no preference.
    static std::optional<ColorScheme> schemeFromPortal(const QVariant &value);

private Q_SLOTS:
    void portalSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void askPortal();
    void setPreference(std::optional<ColorScheme> preference);

    ColorScheme m_fallback;
    std::optional<ColorScheme> m_preference;
};

} // namespace veltrix
