// SPDX-License-Identifier: GPL-3.0-or-later
// The user's choices in the settings file of the program.
#pragma once

#include "ui/preferences/preferences.h"

namespace veltrix
{

class SettingsFile;

/// Preferences kept in a settings file.
class StoredPreferences final : public Preferences
{
public:
    /// `settings` must outlive this object.
    explicit StoredPreferences(SettingsFile &settings) : m_settings(settings) {}

    [[nodiscard]] QString preferredStorefrontCountry() const override;
    void setPreferredStorefrontCountry(const QString &code) override;
    [[nodiscard]] QString keywordTableColumns() const override;
    void setKeywordTableColumns(const QString &columns) override;
    [[nodiscard]] QByteArray windowGeometry() const override;
    void setWindowGeometry(const QByteArray &geometry) override;
    [[nodiscard]] ThemeChoice theme() const override;
    void setTheme(ThemeChoice theme) override;
    [[nodiscard]] DigestChoice digestChoice() const override;
    void setDigestChoice(const DigestChoice &choice) override;

private:
    SettingsFile &m_settings;
};

} // namespace veltrix
