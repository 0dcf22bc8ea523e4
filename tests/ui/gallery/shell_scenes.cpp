// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/shell_scenes.h"

#include "ui/competitors/competitors_view.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/support/research_world.h"
#include "ui_kit/widgets/text_field.h"

#include <QTest>

namespace veltrix
{

namespace
{

constexpr QSize smallWindow{800, 500};

struct ShellStage {
    std::shared_ptr<ResearchWorld> world;
    std::unique_ptr<MainWindow> window;

    template <class T>
    T *find(const char *name) const
    {
        return window->findChild<T *>(QString::fromLatin1(name));
    }
};

Scene scene(const char *name, std::optional<QSize> size, std::function<void(ShellStage &)> act)
{
    return {QString::fromLatin1(name), [size, act = std::move(act)] {
                ShellStage made;
                made.world = std::make_shared<ResearchWorld>();
                made.window = std::make_unique<MainWindow>(made.world->collaborators());
                if (size)
                    made.window->resize(*size);
                made.window->show();
                act(made);
                return Stage{made.world, std::move(made.window)};
            }};
}

/// Many apps, of which one far down is selected.
void addApps(ShellStage &made, int count)
{
    for (int i = int(made.world->store->apps().size()); i < count; ++i) {
        ITunesAppResult result;
        result.trackId = 7000 + i;
        result.trackName = QStringLiteral("Sample App %1").arg(i + 1);
        made.world->store->addApp(result, QStringLiteral("US"));
    }
    made.window->selectApp(made.world->store->apps()[count * 3 / 4].id);
}

void openDetails(ShellStage &made)
{
    made.world->appStore->results = rankedWith(2, 30);
    Q_EMIT made.window->dashboard().rankedAppsRequested(made.world->row("collage maker"));
    QTest::keyClick(made.find<QWidget>("rankedAppRow2"), Qt::Key_Return);
}

} // namespace

std::vector<Scene> shellRoomScenes()
{
    return {
        scene("small-keywords", smallWindow, [](ShellStage &) {}),
        scene("small-competitors", smallWindow,
              [](ShellStage &made) { made.window->showWorkspace(Workspace::Competitors); }),
        scene("small-research", smallWindow,
              [](ShellStage &made) {
                  made.window->showWorkspace(Workspace::Competitors);
                  made.window->competitors().openResearch(201, QStringLiteral("US"),
                                                          QStringLiteral("Foxglove Film Camera"));
              }),
        scene("small-settings", smallWindow, [](ShellStage &made) { made.window->openSettings(); }),
        scene("small-app-search", smallWindow,
              [](ShellStage &made) { made.window->openAppSearch(); }),
        scene("small-details", smallWindow, openDetails),
        scene("small-delete", smallWindow,
              [](ShellStage &made) {
                  auto *apps = made.find<QWidget>("appList");
                  QTest::keyClick(apps, Qt::Key_Delete);
              }),
        scene("selector-100", std::nullopt, [](ShellStage &made) { addApps(made, 100); }),
        scene("selector-100-found", std::nullopt,
              [](ShellStage &made) {
                  addApps(made, 100);
                  made.find<TextField>("appSelectorSearch")->setText(QStringLiteral("app 4"));
                  QTest::keyClick(made.find<TextField>("appSelectorSearch"), Qt::Key_Down);
              }),
        scene("small-selector-100", smallWindow, [](ShellStage &made) { addApps(made, 100); }),
        scene("sheet-focus-kept", std::nullopt,
              [](ShellStage &made) {
                  made.world->appStore->holds = true;
                  Q_EMIT made.window->dashboard().rankedAppsRequested(
                      made.world->row("retro photo"));
                  made.window->activateWindow();
                  made.window->setAttribute(Qt::WA_KeyboardFocusChange);
                  made.find<QWidget>("rankedAppsSheet")->setFocus(Qt::TabFocusReason);
              }),
    };
}

} // namespace veltrix
