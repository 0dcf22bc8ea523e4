// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/sheet_scenes.h"

#include "support/task_outcome.h"
#include "ui/analysis/keyword_analysis_sheet.h"
#include "ui/competitors/competitors_view.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/gallery/compare_scenes.h"
#include "ui/gallery/history_scenes.h"
#include "ui/gallery/listing_scenes.h"
#include "ui/gallery/research_stage.h"
#include "ui/history/range_control.h"
#include "ui/history/rank_chart.h"
#include "ui/history/rank_pictures.h"
#include "ui/history/ranking_history_content.h"
#include "ui/history/ranking_history_sheet.h"
#include "ui/ranked_apps/ranking_apps_sheet.h"
#include "ui/shell/app_selector.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/text_field.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace veltrix
{

namespace
{

/// Short, because every scene here begins with it.
constexpr auto scene = researchScene;

void openAnalysis(ResearchStage &made, const char *keyword)
{
    openSheet(made.window.get(),
              new KeywordAnalysisSheet(*made.world->store, made.world->row(keyword)));
}

void openHistory(ResearchStage &made, const char *keyword)
{
    openSheet(made.window.get(), new RankingHistorySheet(*made.world->store, made.world->files,
                                                         made.world->row(keyword)));
}

void openRankedApps(ResearchStage &made, const char *keyword)
{
    Q_EMIT made.window->dashboard().rankedAppsRequested(made.world->row(keyword));
}

void openCompetitors(ResearchStage &made)
{
    made.window->showWorkspace(Workspace::Competitors);
}

void openResearch(ResearchStage &made)
{
    openCompetitors(made);
    made.window->competitors().openResearch(201, QStringLiteral("US"),
                                            QStringLiteral("Foxglove Film Camera"));
}

void searchFor(ResearchStage &made, const char *term)
{
    openCompetitors(made);
    made.find<TextField>("competitorSearch")->setText(text(term));
    made.click("competitorSearchSubmit");
}

void scrollTo(const ResearchStage &made, const char *area, int value)
{
    QCoreApplication::processEvents();
    made.window->grab();
    made.find<QScrollArea>(area)->verticalScrollBar()->setValue(value);
}

std::vector<Scene> analysisScenes()
{
    return {scene("analysis", nullptr,
                  [](ResearchStage &made) { openAnalysis(made, "collage maker"); }),
            scene("analysis-middle", nullptr,
                  [](ResearchStage &made) {
                      openAnalysis(made, "collage maker");
                      scrollTo(made, "analysisSheetScroll", 560);
                  }),
            scene("analysis-end", nullptr,
                  [](ResearchStage &made) {
                      openAnalysis(made, "collage maker");
                      scrollTo(made, "analysisSheetScroll", 5000);
                  }),
            scene("analysis-insufficient", nullptr,
                  [](ResearchStage &made) { openAnalysis(made, "photo journal"); }),
            scene("analysis-none", nullptr,
                  [](ResearchStage &made) { openAnalysis(made, "grain filter"); })};
}

std::vector<Scene> historyScenes()
{
    const auto longHistory = [](size_t days) {
        return [days](ResearchStage &made) {
            openLongHistory(made, days);
        };
    };
    const auto ranged = [](HistoryRange range) {
        return [range](ResearchStage &made) {
            openHistory(made, "collage maker");
            made.find<QAbstractButton>(qPrintable(QStringLiteral("historyRange%1").arg(int(range))))
                ->click();
        };
    };
    return {scene("history", nullptr,
                  [](ResearchStage &made) {
                      openHistory(made, "collage maker");
                      made.find<RankChart>()->setSelectedDay(11);
                  }),
            scene("history-keyboard", nullptr,
                  [](ResearchStage &made) {
                      openHistory(made, "collage maker");
                      made.find<RankChart>()->setFocus(Qt::TabFocusReason);
                      for (int i = 0; i < 9; ++i)
                          QTest::keyClick(made.find<RankChart>(), Qt::Key_Left);
                  }),
            scene("history-30", nullptr, ranged(HistoryRange::Days30)),
            scene("history-all", nullptr, ranged(HistoryRange::All)),
            scene("history-57", nullptr, longHistory(57)),
            scene("history-year", nullptr, longHistory(365)),
            scene("history-years", nullptr, longHistory(3650)),
            scene("history-unranked", nullptr,
                  [](ResearchStage &made) {
                      const TrackedKeyword keyword = made.world->store->addTrackedKeyword(
                          made.world->appId(), text("sepia"), text("US"));
                      made.world->appStore->results.clear();
                      made.world->store->queueKeywordRefreshes({keyword});
                      openHistory(made, "sepia");
                  }),
            scene("history-empty", nullptr,
                  [](ResearchStage &made) { openHistory(made, "grain filter"); }),
            scene("history-sample", nullptr, [](ResearchStage &made) {
                auto *sheet = new SheetFrame(QStringLiteral("historySheet"),
                                             QStringLiteral("Ranking history"),
                                             SheetFrame::Body::Fixed, {760, 640});
                auto *content = new RankingHistoryContent;
                content->setState({Outcome(made.world->store->rankingTimeline(
                                               made.world->row("collage maker").id, {}))
                                       .value(),
                                   std::nullopt, true, made.world->clock->now()});
                sheet->body()->addWidget(content);
                openSheet(made.window.get(), sheet);
            })};
}

std::vector<Scene> rankedAppsScenes()
{
    return {scene("ranked-apps", nullptr,
                  [](ResearchStage &made) { openRankedApps(made, "collage maker"); }),
            scene(
                "ranked-apps-refreshing",
                [](ResearchWorld &world) { world.appStore->holds = true; },
                [](ResearchStage &made) { openRankedApps(made, "collage maker"); }),
            scene(
                "ranked-apps-kept",
                [](ResearchWorld &world) {
                    world.appStore->fails = [](const QString &) {
                        return true;
                    };
                },
                [](ResearchStage &made) { openRankedApps(made, "collage maker"); }),
            scene(
                "ranked-apps-loading", [](ResearchWorld &world) { world.appStore->holds = true; },
                [](ResearchStage &made) { openRankedApps(made, "retro photo"); }),
            scene(
                "ranked-apps-failed",
                [](ResearchWorld &world) {
                    world.appStore->fails = [](const QString &) {
                        return true;
                    };
                },
                [](ResearchStage &made) { openRankedApps(made, "retro photo"); }),
            scene(
                "ranked-apps-none", [](ResearchWorld &world) { world.appStore->results.clear(); },
                [](ResearchStage &made) { openRankedApps(made, "retro photo"); }),
            scene("ranked-apps-end", nullptr,
                  [](ResearchStage &made) {
                      openRankedApps(made, "collage maker");
                      scrollTo(made, "rankedAppsScroll", 5000);
                  }),
            scene(
                "app-details",
                [](ResearchWorld &world) { world.appStore->results = rankedWith(2, 30); },
                [](ResearchStage &made) {
                    openRankedApps(made, "collage maker");
                    QTest::keyClick(made.find<QWidget>("rankedAppRow2"), Qt::Key_Return);
                }),
            scene(
                "app-details-failed",
                [](ResearchWorld &world) {
                    world.appStore->fails = [](const QString &what) {
                        return what == u"1001";
                    };
                },
                [](ResearchStage &made) {
                    openRankedApps(made, "collage maker");
                    QTest::keyClick(made.find<QWidget>("rankedAppRow1"), Qt::Key_Return);
                })};
}

} // namespace

Scene researchScene(const char *name, std::function<void(ResearchWorld &)> prepare,
                    std::function<void(ResearchStage &)> act)
{
    return {QString::fromLatin1(name), [prepare = std::move(prepare), act = std::move(act)] {
                ResearchStage made;
                made.world = std::make_shared<ResearchWorld>();
                if (prepare)
                    prepare(*made.world);
                made.window = std::make_unique<MainWindow>(made.world->collaborators());
                made.window->show();
                made.find<AppSelector>()->setExpanded(true);
                act(made);
                return Stage{made.world, std::move(made.window)};
            }};
}

void openLongHistory(ResearchStage &made, size_t days)
{
    const Date now = made.world->clock->now();
    const std::int64_t first = utcDay(now) - std::int64_t(days) + 1;
    std::vector<RankingTimeline::Observation> checks;
    for (const RankingTimeline::Day &day : generatedDays(days, 3, 40, first)) {
        if (day.observation)
            checks.push_back(*day.observation);
    }
    openHistory(made, "collage maker");
    made.find<RankingHistoryContent>()->setState(
        {RankingTimeline(std::move(checks), now), std::nullopt, false, now});
    made.find<QAbstractButton>("historyRange3")->click();
}

std::vector<Scene> sheetScenes()
{
    std::vector<Scene> scenes;
    for (const auto &part : {analysisScenes(), historyScenes(), compareScenes(),
                             narrowedHistoryScenes(), rankedAppsScenes(), listingScenes()})
        scenes.insert(scenes.end(), part.begin(), part.end());
    return scenes;
}

std::vector<Scene> competitorScenes()
{
    const auto fail = [](ResearchWorld &world) {
        world.appStore->fails = [](const QString &) {
            return true;
        };
    };
    const auto hold = [](ResearchWorld &world) {
        world.appStore->holds = true;
    };
    return {scene("competitors-cards", nullptr, openCompetitors),
            scene("competitors-none", nullptr,
                  [](ResearchStage &made) {
                      made.window->selectApp(made.world->store->apps()[1].id);
                      openCompetitors(made);
                  }),
            scene("competitors-results", nullptr,
                  [](ResearchStage &made) { searchFor(made, "film camera"); }),
            scene("competitors-searching", hold,
                  [](ResearchStage &made) { searchFor(made, "film camera"); }),
            scene("competitors-search-failed", fail,
                  [](ResearchStage &made) { searchFor(made, "film camera"); }),
            scene(
                "competitors-search-none",
                [](ResearchWorld &world) { world.appStore->results.clear(); },
                [](ResearchStage &made) { searchFor(made, "zzzz"); }),
            scene("research", nullptr,
                  [](ResearchStage &made) {
                      openResearch(made);
                      auto *table = made.find<QWidget>("keywordChecks");
                      QTest::keyClick(table, Qt::Key_Down);
                      QTest::keyClick(table, Qt::Key_Space);
                      QTest::keyClick(table, Qt::Key_Down);
                      QTest::keyClick(table, Qt::Key_Space);
                  }),
            scene("research-checking", nullptr,
                  [](ResearchStage &made) {
                      made.world->appStore->fails = [&store =
                                                         *made.world->appStore](const QString &) {
                          store.holds = store.searches.size() > 5;
                          return false;
                      };
                      openResearch(made);
                  }),
            scene("research-loading", hold, openResearch),
            scene("research-failed", fail, openResearch),
            scene(
                "research-coverage-failed",
                [](ResearchWorld &world) {
                    world.appStore->fails = [](const QString &what) {
                        return what == u"film";
                    };
                },
                openResearch),
            scene(
                "research-bare",
                [](ResearchWorld &world) {
                    ITunesAppResult bare;
                    bare.trackId = 201;
                    world.appStore->apps.insert(201, bare);
                },
                openResearch),
            scene("research-narrow", nullptr,
                  [](ResearchStage &made) {
                      made.window->resize(900, 760);
                      openResearch(made);
                  }),
            scene("screenshot-large", nullptr, [](ResearchStage &made) {
                openResearch(made);
                QTest::keyClick(made.find<QWidget>("screenshot2"), Qt::Key_Return);
            })};
}

std::vector<Scene> trackingScenes()
{
    const auto trackAll = [](ResearchStage &made, const char *country) {
        openCompetitors(made);
        made.window->competitors().openResearch(201, QString::fromLatin1(country),
                                                QStringLiteral("Foxglove Film Camera"));
        QTest::keyClick(made.find<QWidget>("keywordChecks"), Qt::Key_A, Qt::ControlModifier);
        made.click("trackKeywords");
    };
    return {scene("research-tracked", nullptr, [=](ResearchStage &made) { trackAll(made, "US"); }),
            scene("research-refused", nullptr, [=](ResearchStage &made) { trackAll(made, "UK"); })};
}

} // namespace veltrix
