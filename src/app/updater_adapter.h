// SPDX-License-Identifier: GPL-3.0-or-later
// The updater, as the windows ask for it.
#pragma once

#include "clients/update/updater.h"
#include "ui/settings/updater_interface.h"

#include <QUrl>

#include <functional>

namespace veltrix
{

/// Tells the windows what an Updater does, in words, and passes on what they ask of it.
class UpdaterAdapter final : public UpdaterInterface
{
    Q_OBJECT

public:
    /// `updater` must outlive this object. `openUrl` shows a page in the user's browser,
    /// `showInFolder` a file in the desktop's file manager.
    UpdaterAdapter(Updater &updater, std::function<void(const QUrl &)> openUrl,
                   std::function<void(const QString &)> showInFolder, QObject *parent = nullptr);

    [[nodiscard]] bool automaticallyChecksForUpdates() const override;
    void setAutomaticallyChecksForUpdates(bool automatically) override;
    [[nodiscard]] bool canCheckForUpdates() const override;
    void checkForUpdates() override;
    [[nodiscard]] UpdaterStatus status() const override;
    void stop() override;
    void performAction() override;
    void dismiss() override;

private:
    Updater &m_updater;
    std::function<void(const QUrl &)> m_openUrl;
    std::function<void(const QString &)> m_showInFolder;
};

} // namespace veltrix
