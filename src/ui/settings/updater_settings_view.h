// SPDX-License-Identifier: GPL-3.0-or-later
// The updater's part of the settings: its switch, its button, and what a check says.
#pragma once

#include "ui/settings/updater_interface.h"

#include <QWidget>

#include <functional>

class QCheckBox;

namespace veltrix
{

class Button;
class ProgressLine;
class SettingsSection;
class TextLabel;

/// Puts its parts into a section and ties them to an updater. Itself it shows nothing.
class UpdaterSettingsView final : public QWidget
{
    Q_OBJECT

public:
    /// The updater must outlive this. `openUrl` shows a page in the user's browser.
    UpdaterSettingsView(UpdaterInterface &updater, std::function<void(const QUrl &)> openUrl,
                        SettingsSection &section);

private:
    [[nodiscard]] QWidget *statusRow();
    void showState();

    UpdaterInterface &m_updater;
    std::function<void(const QUrl &)> m_openUrl;
    QCheckBox *m_automatic;
    Button *m_check;
    TextLabel *m_status;
    ProgressLine *m_progress;
    Button *m_stop;
    Button *m_action;
    QWidget *m_statusRow;
    TextLabel *m_notes;
    Button *m_notesLink;
};

} // namespace veltrix
