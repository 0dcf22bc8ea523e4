// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/scenes.h"

#include "ui/app_search/app_search.h"
#include "ui/app_search/app_search_sheet.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/gallery/keyword_scenes.h"
#include "ui/gallery/overview_scenes.h"
#include "ui/gallery/rival_scenes.h"
#include "ui/gallery/settings_scenes.h"
#include "ui/gallery/sheet_scenes.h"
#include "ui/gallery/shell_scenes.h"
#include "ui/gallery/suggestion_scenes.h"
#include "ui/gallery/table_scenes.h"
#include "ui/gallery/tag_scenes.h"
#include "ui/shell/app_selector.h"
#include "ui/support/ui_world.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_field.h"

#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QTest>

namespace veltrix
{

namespace
{

struct WindowStage {
    std::shared_ptr<UiWorld> world;
    std::unique_ptr<MainWindow> window;

    Stage stage() { return {world, std::move(window)}; }
    template <class T>
    T *find(const char *name) const
    {
        T *found = nullptr;
        for (T *widget : window->findChildren<T *>(QString::fromLatin1(name))) {
            if (!found || widget->isVisible())
                found = widget;
        }
        return found;
    }
};

WindowStage openWindow(std::shared_ptr<UiWorld> world)
{
    WindowStage made;
    made.window = std::make_unique<MainWindow>(world->collaborators());
    made.world = std::move(world);
    made.window->show();
    return made;
}

WindowStage sampleWindow()
{
    WindowStage made = openWindow(UiWorld::sample());
    made.find<AppSelector>("")->setExpanded(true);
    return made;
}

void click(const WindowStage &made, const char *name)
{
    made.find<QAbstractButton>(name)->click();
}

Scene scene(const char *name, std::function<void(WindowStage &)> act)
{
    return {QString::fromLatin1(name), [act = std::move(act)] {
                WindowStage made = sampleWindow();
                act(made);
                return made.stage();
            }};
}

void selectRow(const WindowStage &made, int row)
{
    made.window->dashboard().table().QTableView::selectRow(row);
}

void searchApps(WindowStage &made, const QString &query)
{
    click(made, "addAppButton");
    made.find<TextField>("appSearchField")->setText(query);
    click(made, "appSearchSubmit");
}

/// The sample with keywords that can never be measured, and with some whose app is gone.
PersistedState stateWithUnmeasurableKeywords()
{
    const Date now = VirtualClock().now();
    PersistedState state = sampleState(now, FakePopularity().version);
    const auto add = [&](const QString &keyword, const char *country, QUuid appId) {
        state.trackedKeywords.append(
            {QUuid::createUuid(), appId, keyword, QString::fromLatin1(country), now});
    };
    const QUuid app = state.apps.first().id;
    add(QStringLiteral("a whole sentence of the description ").repeated(4).trimmed(), "US", app);
    add(QStringLiteral("brush and retouch"), "UK", app);
    for (const char *keyword : {"tide table", "moon phase", "harbour clock"})
        add(QString::fromLatin1(keyword), "US", QUuid::createUuid());
    return state;
}

std::vector<Scene> dashboardScenes()
{
    std::vector<Scene> scenes;
    scenes.push_back({QStringLiteral("window-first-start"), [] {
                          return openWindow(std::make_shared<UiWorld>()).stage();
                      }});
    scenes.push_back({QStringLiteral("window-no-keywords"), [] {
                          PersistedState state = sampleState(VirtualClock().now(), {});
                          state.trackedKeywords.clear();
                          state.snapshots.clear();
                          return openWindow(std::make_shared<UiWorld>(state)).stage();
                      }});
    scenes.push_back(scene("dashboard", [](WindowStage &made) { selectRow(made, 1); }));
    scenes.push_back(scene("dashboard-measuring", [](WindowStage &made) {
        made.world->client->holds = true;
        made.world->store->queueKeywordRefreshes(made.world->store->trackedKeywords());
    }));
    scenes.push_back(scene("dashboard-error", [](WindowStage &made) {
        made.world->client->fails = [](const QString &) {
            return true;
        };
        made.world->clock->advance(Seconds(secondsPerDay));
        made.window->setActive(true);
        QCoreApplication::processEvents();
        selectRow(made, 1);
        QTest::mouseMove(made.window->dashboard().table().viewport(), QPoint(60, 180));
    }));
    scenes.push_back(scene("dashboard-refreshing", [](WindowStage &made) {
        made.world->client->holds = true;
        made.window->dashboard().refreshAll();
        made.world->client->release();
    }));
    scenes.push_back(scene("dashboard-up-to-date",
                           [](WindowStage &made) { made.window->dashboard().refreshAll(); }));
    scenes.push_back(scene("dashboard-stopped", [](WindowStage &made) {
        made.world->client->holds = true;
        made.window->dashboard().refreshAll();
        click(made, "stopButton");
    }));
    scenes.push_back(scene("dashboard-no-match", [](WindowStage &made) {
        made.find<TextField>("keywordSearch")->setText(QStringLiteral("watercolour"));
        QTest::keyClick(made.find<TextField>("keywordSearch"), Qt::Key_Return);
    }));
    scenes.push_back(scene("dashboard-columns", [](WindowStage &made) {
        KeywordTableView &table = made.window->dashboard().table();
        table.setColumnVisible(KeywordColumn::Target, false);
        table.horizontalHeader()->moveSection(4, 1);
        table.horizontalHeader()->setSortIndicator(2, Qt::DescendingOrder);
    }));
    scenes.push_back(
        scene("dashboard-narrow", [](WindowStage &made) { made.window->resize(900, 560); }));
    scenes.push_back({QStringLiteral("dashboard-unmeasurable"), [] {
                          WindowStage made = openWindow(
                              std::make_shared<UiWorld>(stateWithUnmeasurableKeywords()));
                          made.find<AppSelector>("")->setExpanded(true);
                          selectRow(made, 2);
                          return made.stage();
                      }});
    scenes.push_back(
        scene("storefront-list", [](WindowStage &made) { click(made, "storefrontFilter"); }));
    scenes.push_back(scene("delete-keyword", [](WindowStage &made) {
        selectRow(made, 1);
        made.window->dashboard().removeSelected();
    }));
    scenes.push_back(scene("delete-keywords", [](WindowStage &made) {
        made.window->dashboard().table().selectAll();
        made.window->dashboard().removeSelected();
    }));
    scenes.push_back(scene("keyboard-focus", [](WindowStage &made) {
        selectRow(made, 3);
        made.window->dashboard().table().setFocus(Qt::TabFocusReason);
        QTest::keyClick(&made.window->dashboard().table(), Qt::Key_Down);
    }));
    return scenes;
}

/// Saving fails from now on, and a change waits for it.
void failToSave(const WindowStage &made)
{
    made.world->folder.remove();
    const QUuid app = made.world->store->apps().constFirst().id;
    made.world->store->addTrackedKeyword(app, QStringLiteral("sepia"), QStringLiteral("US"));
    made.world->store->waitUntilSaved();
}

Scene unreadScene(const char *name, std::function<void(WindowStage &)> act)
{
    return {QString::fromLatin1(name), [act = std::move(act)] {
                std::shared_ptr<UiWorld> world = UiWorld::sample();
                world->folder.remove();
                world->restartStore();
                WindowStage made = openWindow(world);
                act(made);
                return made.stage();
            }};
}

std::vector<Scene> persistenceScenes()
{
    return {
        scene("persistence-unsaved", [](WindowStage &made) { failToSave(made); }),
        scene("persistence-unsaved-competitors",
              [](WindowStage &made) {
                  failToSave(made);
                  made.window->resize(900, 560);
                  made.window->showWorkspace(Workspace::Competitors);
                  click(made, "persistenceTryAgain");
                  made.world->store->waitUntilSaved();
              }),
        scene("persistence-kept",
              [](WindowStage &made) {
                  QFile(made.world->folder.filePath(QStringLiteral("state.json"))).resize(2);
                  const QUuid app = made.world->store->apps().constFirst().id;
                  made.world->store->addTrackedKeyword(app, QStringLiteral("sepia"),
                                                       QStringLiteral("US"));
                  made.world->store->waitUntilSaved();
              }),
        scene("persistence-quit",
              [](WindowStage &made) {
                  failToSave(made);
                  made.window->close();
              }),
        unreadScene("persistence-unread", [](WindowStage &) {}),
        unreadScene("persistence-unread-competitors",
                    [](WindowStage &made) { made.window->showWorkspace(Workspace::Competitors); }),
        unreadScene("persistence-begin-anew",
                    [](WindowStage &made) { click(made, "persistenceBeginAnew"); }),
    };
}

std::vector<Scene> searchScenes()
{
    std::vector<Scene> scenes;
    scenes.push_back(scene("app-search", [](WindowStage &made) { click(made, "addAppButton"); }));
    scenes.push_back(scene("app-search-results", [](WindowStage &made) {
        made.world->discovery->results = sampleResults();
        searchApps(made, QStringLiteral("photo editor"));
    }));
    scenes.push_back(scene("app-search-searching", [](WindowStage &made) {
        made.world->discovery->holds = true;
        searchApps(made, QStringLiteral("photo editor"));
    }));
    scenes.push_back(scene("app-search-failed", [](WindowStage &made) {
        made.world->discovery->fails = [](const QString &) {
            return true;
        };
        searchApps(made, QStringLiteral("photo editor"));
    }));
    scenes.push_back(scene("app-search-none",
                           [](WindowStage &made) { searchApps(made, QStringLiteral("zzzz")); }));
    return scenes;
}

enum class Opens { Nothing, Settings };

Scene updateScene(const char *name, const UpdaterStatus &status, Opens opens)
{
    return {QString::fromLatin1(name), [status, opens] {
                std::shared_ptr<UiWorld> world = UiWorld::sample();
                world->hasUpdater = true;
                world->updater.shown = status;
                WindowStage made = openWindow(world);
                if (opens == Opens::Settings)
                    made.window->openSettings();
                return made.stage();
            }};
}

std::vector<Scene> updateScenes()
{
    UpdaterStatus available{QStringLiteral("Version 1.5 is available."), std::nullopt, false,
                            QStringLiteral("Download")};
    available.notes = QStringLiteral("What is new\n• Rankings load faster.\n• Charts mark days "
                                     "without a check, so that a gap is not taken for a rank.\n"
                                     "• Update packages are checked for their version.");
    available.notesLink = QUrl(QStringLiteral("https://veltrix.example/notes"));
    available.announcement = {QStringLiteral("Version 1.5 of Veltrix is available.")};
    UpdaterStatus critical = available;
    critical.announcement = {
        QStringLiteral("Version 1.5 of Veltrix fixes a critical problem. Please install it soon."),
        true};
    UpdaterStatus handedOver{
        QStringLiteral("Version 1.5 was verified and handed to the system’s installer. The package "
                       "is in “/home/ana/.cache/Veltrix/updates/update-x7Fq2A/veltrix_1.5.deb”."),
        std::nullopt, false, QStringLiteral("Show in Folder")};
    handedOver.announcement = {handedOver.text, false, true};
    return {updateScene("settings-update-available", available, Opens::Settings),
            updateScene("settings-update-handed-over", handedOver, Opens::Settings),
            updateScene("update-found", available, Opens::Nothing),
            updateScene("update-critical", critical, Opens::Nothing),
            updateScene("update-handed-over", handedOver, Opens::Nothing)};
}

std::vector<Scene> shellScenes()
{
    std::vector<Scene> scenes;
    scenes.push_back(scene("competitors", [](WindowStage &made) {
        made.window->showWorkspace(Workspace::Competitors);
    }));
    scenes.push_back(scene("competitors-measuring", [](WindowStage &made) {
        made.window->showWorkspace(Workspace::Competitors);
        made.world->client->holds = true;
        made.world->store->queueKeywordRefreshes(made.world->store->trackedKeywords());
    }));
    scenes.push_back(scene("competitors-error", [](WindowStage &made) {
        made.window->showWorkspace(Workspace::Competitors);
        made.world->client->fails = [](const QString &) {
            return true;
        };
        made.window->dashboard().refreshAll();
    }));
    scenes.push_back(scene("sidebar-no-match", [](WindowStage &made) {
        made.find<TextField>("appSelectorSearch")->setText(QStringLiteral("zzz"));
    }));
    scenes.push_back(scene("settings", [](WindowStage &made) { made.window->openSettings(); }));
    scenes.push_back(
        {QStringLiteral("settings-updater"), [] {
             std::shared_ptr<UiWorld> world = UiWorld::sample();
             world->hasUpdater = true;
             world->information.research = {ResearchServiceInformation::Kind::Research,
                                            QStringLiteral("research.veltrix.example")};
             world->updater.shown = {QStringLiteral("Loading Veltrix 1.5…"), 0.4, true, QString()};
             WindowStage made = openWindow(world);
             made.window->openSettings();
             return made.stage();
         }});
    for (Scene &update : updateScenes())
        scenes.push_back(std::move(update));
    scenes.push_back(
        {QStringLiteral("menu-more"), [] {
             WindowStage made = sampleWindow();
             click(made, "moreButton");
             auto *menu = made.find<QMenu>("moreMenu");
             // The menu is what is shown, and it lives in the window.
             auto window = std::shared_ptr<MainWindow>(std::move(made.window));
             auto world = made.world;
             menu->setParent(nullptr, menu->windowFlags());
             menu->setAttribute(Qt::WA_DeleteOnClose, false);
             auto keep =
                 std::make_shared<std::pair<std::shared_ptr<UiWorld>, std::shared_ptr<MainWindow>>>(
                     world, window);
             return Stage{keep, std::unique_ptr<QWidget>(menu)};
         }});
    return scenes;
}

} // namespace

std::vector<Scene> galleryScenes()
{
    std::vector<Scene> scenes;
    for (const auto &part :
         {dashboardScenes(), persistenceScenes(), searchScenes(), shellScenes(), sheetScenes(),
          competitorScenes(), trackingScenes(), keywordScenes(), suggestionScenes(), tableScenes(),
          tagScenes(), shellRoomScenes(), settingsScenes(), overviewScenes(), rivalScenes()})
        scenes.insert(scenes.end(), part.begin(), part.end());
    return scenes;
}

Stage settledStage(const Scene &scene)
{
    Stage stage = scene.build();
    stage.widget->show();
    // Artwork arrives while the first picture is painted.
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        stage.widget->grab();
    }
    return stage;
}

QPixmap renderScene(const Scene &scene)
{
    const Stage stage = settledStage(scene);
    return stage.widget->grab();
}

} // namespace veltrix
