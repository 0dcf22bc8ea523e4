// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/rival_scenes.h"

#include "ui/competitors/above_you_table.h"
#include "ui/competitors/change_log_view.h"
#include "ui/competitors/competitors_view.h"
#include "ui/competitors/shared_keywords_table.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/shell/app_selector.h"
#include "ui/support/rival_world.h"

#include <QAbstractButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace veltrix
{

namespace
{

using Prepare = std::function<void(RivalWorld &)>;
using Act = std::function<void(RivalWorld &, MainWindow &)>;

void settle(MainWindow &window)
{
    for (int i = 0; i < 5; ++i) {
        QTest::qWait(1);
        window.grab();
    }
}

Scene scene(const char *name, Prepare prepare, Act act, QSize size = {1280, 800},
            std::vector<RivalRanks> keywords = RivalWorld::shownKeywords())
{
    return {QString::fromLatin1(name), [=] {
                auto world = std::make_shared<RivalWorld>(keywords);
                if (prepare)
                    prepare(*world);
                auto window = std::make_unique<MainWindow>(world->collaborators());
                window->resize(size);
                window->show();
                if (auto *selector = window->findChild<AppSelector *>())
                    selector->setExpanded(size.height() > 600);
                act(*world, *window);
                settle(*window);
                return Stage{world, std::move(window)};
            }};
}

void play(RivalWorld &world)
{
    world.playThreeMonths();
}

void openPage(RivalWorld &world, MainWindow &window)
{
    window.showWorkspace(Workspace::Competitors);
    window.competitors().openResearch(201, QStringLiteral("US"), *world.rival.trackName);
    settle(window);
}

void scrollTo(MainWindow &window, const char *area, int value)
{
    settle(window);
    window.findChild<QScrollArea *>(QString::fromLatin1(area))
        ->verticalScrollBar()
        ->setValue(value);
}

Act openAbove(const char *keyword, const char *country = "US")
{
    return [=](RivalWorld &world, MainWindow &window) {
        Q_EMIT window.dashboard().aboveYouRequested(world.row(keyword, country));
        settle(window);
    };
}

/// A version every other day.
void playManyVersions(RivalWorld &world)
{
    world.track();
    for (int i = 0; i < 14; ++i) {
        world.goTo(10, 2 * i + 1);
        world.rival.version = QStringLiteral("5.1.%1").arg(i);
        world.measure("film camera filter");
    }
    world.rival.trackName = text("\u202EFoxglove\u0007 עורך תמונות למצלמה");
    world.goTo(11, 22);
    world.measureAll();
}

std::vector<RivalRanks> manyKeywords()
{
    static const std::vector<std::string> names = [] {
        std::vector<std::string> made;
        for (int i = 1; i <= 60; ++i)
            made.push_back("photo keyword " + std::to_string(i));
        return made;
    }();
    std::vector<RivalRanks> keywords;
    for (size_t i = 0; i < names.size(); ++i)
        keywords.push_back({names[i].c_str(), i % 3 == 0 ? "CA" : "US", int(i * 7 % 40) + 1,
                            int(i * 11 % 50) + 45});
    return keywords;
}

std::vector<Scene> pageScenes()
{
    const auto track = [](RivalWorld &world) {
        world.track();
    };
    return {scene("competitor-page", play,
                  [](RivalWorld &world, MainWindow &window) {
                      openPage(world, window);
                      auto *table = window.findChild<SharedKeywordsTable *>();
                      table->setFocus(Qt::TabFocusReason);
                      table->QTableView::selectRow(2);
                  }),
            scene("competitor-page-middle", play,
                  [](RivalWorld &world, MainWindow &window) {
                      openPage(world, window);
                      scrollTo(window, "researchPage", 420);
                  }),
            scene("competitor-page-just-tracked", track, openPage),
            scene(
                "competitor-page-nothing-shared",
                [](RivalWorld &world) {
                    world.track();
                    for (RivalRanks ranks : RivalWorld::shownKeywords()) {
                        (ranks.own % 2 == 0 ? ranks.own : ranks.theirs) = 0;
                        world.rank(ranks);
                    }
                    world.goTo(8, 22);
                    world.measureAll();
                },
                openPage),
            scene("competitor-page-long-log", playManyVersions,
                  [](RivalWorld &world, MainWindow &window) {
                      openPage(world, window);
                      window.findChild<QAbstractButton *>(QStringLiteral("changeLogMore"))->click();
                  }),
            scene("competitor-page-narrow", play, openPage, {1000, 760}),
            scene("competitor-page-narrow-log", play,
                  [](RivalWorld &world, MainWindow &window) {
                      openPage(world, window);
                      scrollTo(window, "researchPage", 620);
                  },
                  {800, 500}),
            scene(
                "competitor-page-many",
                [](RivalWorld &world) {
                    world.track();
                    world.measureAll();
                },
                [](RivalWorld &world, MainWindow &window) {
                    openPage(world, window);
                    scrollTo(window, "researchPage", 560);
                },
                {1280, 800}, manyKeywords()),
            scene(
                "competitor-page-unreadable",
                [](RivalWorld &world) {
                    world.playThreeMonths();
                    world.damageHistory();
                },
                openPage)};
}

std::vector<Scene> aboveScenes()
{
    return {scene("above-you", play,
                  [](RivalWorld &world, MainWindow &window) {
                      openAbove("photo editor")(world, window);
                      auto *table = window.findChild<AboveYouTable *>();
                      table->setFocus(Qt::TabFocusReason);
                      table->QTableView::selectRow(1);
                  }),
            scene("above-you-narrow", play, openAbove("photo editor"), {800, 500}),
            scene("above-you-first", play, openAbove("light leak effect")),
            scene(
                "above-you-not-ranked",
                [](RivalWorld &world) {
                    world.track();
                    world.rank({"photo filter", "DE", 0, 31});
                    world.measure("photo filter", "DE");
                },
                openAbove("photo filter", "DE")),
            scene("above-you-nothing-kept", nullptr, openAbove("photo editor")),
            scene(
                "above-you-unreadable",
                [](RivalWorld &world) {
                    world.playThreeMonths();
                    world.damageHistory();
                },
                openAbove("photo editor"))};
}

} // namespace

std::vector<Scene> rivalScenes()
{
    std::vector<Scene> scenes = pageScenes();
    for (Scene &above : aboveScenes())
        scenes.push_back(std::move(above));
    return scenes;
}

} // namespace veltrix
