// SPDX-License-Identifier: GPL-3.0-or-later
// The settings: research, updates, help, about.
#pragma once

#include "ui/settings/app_information.h"

#include <QWidget>

#include <functional>

class QVBoxLayout;

namespace veltrix
{

class Preferences;
class UpdaterInterface;

/// All settings below each other, under a header with "Done".
class SettingsSheet final : public QWidget
{
    Q_OBJECT

public:
    /// Opens an address with the system's default handler.
    using OpenUrl = std::function<void(const QUrl &)>;

    /// `updater` is null in builds that cannot update.
    SettingsSheet(Preferences &preferences, const AppInformation &information,
                  UpdaterInterface *updater, OpenUrl openUrl, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void preferredStorefrontChanged(const QString &code);
    void closeRequested();

private:
    [[nodiscard]] QWidget *researchSection(Preferences &preferences,
                                           const ResearchServiceInformation &research);
    [[nodiscard]] QWidget *updatesSection(UpdaterInterface *updater);
    [[nodiscard]] QWidget *helpSection(const AppInformation &information);
    [[nodiscard]] QWidget *aboutSection(const AppInformation &information);

    OpenUrl m_openUrl;
    QVBoxLayout *m_sections;
};

} // namespace veltrix
