// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/settings_scenes.h"

#include "ui/support/ui_world.h"

#include <QCheckBox>

namespace veltrix
{

namespace
{

struct SettingsStage {
    std::shared_ptr<UiWorld> world;
    std::unique_ptr<MainWindow> window;
};

Scene scene(const char *name, const DailyTimerState &state,
            std::function<void(SettingsStage &)> act = {})
{
    return {QString::fromLatin1(name), [state, act = std::move(act)] {
                SettingsStage made;
                made.world = UiWorld::sample();
                made.world->timing.known = state;
                made.window = std::make_unique<MainWindow>(made.world->collaborators());
                made.window->show();
                made.window->openSettings();
                if (act)
                    act(made);
                return Stage{made.world, std::move(made.window)};
            }};
}

DailyTimerState on()
{
    const Date now = VirtualClock().now();
    DailyTimerState state;
    state.isOn = true;
    state.plan = {QTime(8, 15), std::chrono::minutes(30)};
    state.lastRun = now - Seconds(5 * 3600);
    state.nextRun = now + Seconds(19 * 3600);
    return state;
}

} // namespace

std::vector<Scene> settingsScenes()
{
    DailyTimerState noManager;
    noManager.unavailable = QStringLiteral("Failed to connect to bus: No medium found");
    DailyTimerState failed = on();
    failed.hasLastRunFailed = true;
    DailyTimerState changed = on();
    changed.plan.reset();
    changed.isChangedByHand = true;
    return {
        scene("settings-daily-off", {}),
        scene("settings-daily-on", on()),
        scene("settings-daily-failed", failed),
        scene("settings-daily-no-manager", noManager),
        scene("settings-daily-by-hand", changed),
        scene("settings-daily-refused", {},
              [](SettingsStage &made) {
                  made.world->timing.refusal =
                      QStringLiteral("Unit file /home/ana/.config/systemd/user/"
                                     "veltrix-measure.timer is masked.");
                  made.window->findChild<QCheckBox *>(QStringLiteral("dailyMeasuring"))->click();
              }),
    };
}

} // namespace veltrix
