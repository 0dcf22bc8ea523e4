// SPDX-License-Identifier: GPL-3.0-or-later
// The program: who works with whom is decided here and nowhere else.
#pragma once

#include "app/file_dialogs.h"
#include "app/services.h"
#include "app/stored_preferences.h"
#include "app/updater_adapter.h"
#include "clients/network_return.h"
#include "effects/daily_timer.h"
#include "headless/rank_telling.h"
#include "headless/served_guests.h"
#include "ui/shell/main_window.h"
#include "ui_kit/theme/chosen_color_scheme.h"

#include <memory>

class QApplication;
class QSessionManager;

namespace veltrix
{

/// Holds the store, the updater and the window for the life of the process.
class VeltrixApp
{
public:
    /// What the window shows first.
    enum class Opens { Keywords, Overview };

    /// Runs the program on the user's data folder and gives its exit status. When another process
    /// has the folder, that one's window is raised and this one ends.
    /// `earlyRead` has begun to read the state file; it may be null.
    static int run(QApplication &application, Opens opens, EarlyStateRead *earlyRead = nullptr);

    /// `colorScheme` is what the program looks like; it outlives this and gets the user's choices.
    VeltrixApp(const Bundle &bundle, const DataPlaces &data, std::shared_ptr<SettingsFile> settings,
               ChosenColorScheme &colorScheme);

    /// Empty until open().
    [[nodiscard]] MainWindow &window() { return *m_window; }
    /// Reads what is saved, of which `earlyRead` may have read something, and shows the window.
    /// What asks the system or the network begins once that has been painted.
    void open(EarlyStateRead *earlyRead = nullptr);

    /// The program is asked to end and cannot ask the user: what can still be saved is saved. False
    /// when a change is lost.
    bool prepareToEnd();

private:
    /// Ends orderly when the system or the desktop's session asks for it.
    void followEnd(QApplication &application);
    void endSession(QSessionManager &session);

    Services m_services;
    std::shared_ptr<SettingsFile> m_settings;
    StoredPreferences m_preferences;
    FileDialogs m_files;
    DailyTimer m_timing{DailyTimer::ofThisProgram()};
    std::unique_ptr<UpdaterAdapter> m_updater;
    std::unique_ptr<MainWindow> m_window;
    RankTelling m_telling;
    ServedGuests m_guests;
    NetworkReturn m_networkReturn;
};

} // namespace veltrix
