// SPDX-License-Identifier: GPL-3.0-or-later
// The settings: appearance, research, measuring every day, notifications, updates, help, about.
#pragma once

#include "ui/settings/app_information.h"

#include "ui_kit/theme/theme_choice.h"
#include "ui_kit/widgets/sheet_frame.h"

#include <functional>

namespace veltrix
{

class DailyMeasuring;
class Preferences;
class UpdaterInterface;

/// All settings below each other, as high as they are.
class SettingsSheet final : public SheetFrame
{
    Q_OBJECT

public:
    /// What lies outside of the program.
    struct Outside {
        /// Opens an address with the system's default handler.
        std::function<void(const QUrl &)> openUrl;
        /// Shows the user's data in the file manager.
        std::function<void()> showDataFolder;
    };

    /// `updater` is null in builds that cannot update.
    SettingsSheet(Preferences &preferences, const AppInformation &information,
                  DailyMeasuring &daily, UpdaterInterface *updater, Outside outside,
                  QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void preferredStorefrontChanged(const QString &code);
    void themeChanged(veltrix::ThemeChoice theme);

private:
    [[nodiscard]] QWidget *appearanceSection(Preferences &preferences);
    [[nodiscard]] QWidget *researchSection(Preferences &preferences,
                                           const ResearchServiceInformation &research);
    [[nodiscard]] static QWidget *dailySection(DailyMeasuring &daily);
    [[nodiscard]] QWidget *notificationsSection(Preferences &preferences);
    [[nodiscard]] QWidget *updatesSection(UpdaterInterface *updater);
    [[nodiscard]] QWidget *helpSection(const AppInformation &information);
    [[nodiscard]] QWidget *aboutSection(const AppInformation &information);

    Outside m_outside;
};

} // namespace veltrix
