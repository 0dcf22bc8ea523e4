// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/history_scenes.h"

#include "effects/atomic_file.h"
#include "support/task_outcome.h"
#include "ui/dashboard/dashboard_page.h"
#include "ui/gallery/research_stage.h"
#include "ui/history/rank_chart.h"
#include "ui/history/ranking_history_sheet.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace veltrix
{

namespace
{

/// Laid out as it will be seen.
RankChart &chartOf(ResearchStage &made)
{
    QCoreApplication::processEvents();
    made.window->grab();
    return *made.find<RankChart>();
}

void dragHalfWay(ResearchStage &made)
{
    openLongHistory(made, 365);
    RankChart &chart = chartOf(made);
    const QRectF area = chart.plot().area;
    QTest::mousePress(&chart, Qt::LeftButton, {},
                      QPointF(area.left() + area.width() * 0.3, area.center().y()).toPoint());
    const QPointF to(area.left() + area.width() * 0.6, area.center().y() + 20);
    QMouseEvent move(QEvent::MouseMove, to, chart.mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     {});
    QCoreApplication::sendEvent(&chart, &move);
}

void openLow(ResearchStage &made)
{
    made.window->resize(800, 500);
    openLongHistory(made, 365);
    chartOf(made);
}

void spoilHistory(ResearchWorld &world)
{
    writeFileAtomically(world.folder.filePath(QStringLiteral("history.sqlite")), "not a database");
    world.restartStore();
}

/// The whole history on its way into a file that takes its time.
void exportHistory(ResearchStage &made)
{
    made.world->files.holds = true;
    made.window->dashboard().exportHistory();
    for (int i = 0; i < 5; ++i)
        made.world->files.release();
}

} // namespace

std::vector<Scene> narrowedHistoryScenes()
{
    return {researchScene("history-choosing-days", nullptr, dragHalfWay),
            researchScene(
                "history-incomplete", spoilHistory,
                [](ResearchStage &made) {
                    openSheet(made.window.get(),
                              new RankingHistorySheet(*made.world->store, made.world->files,
                                                      made.world->row("collage maker")));
                    waitFor([&] { return !made.find<QLabel>("historyIncomplete")->isHidden(); });
                }),
            researchScene("history-exporting", nullptr, exportHistory),
            researchScene("history-narrowed", nullptr,
                          [](ResearchStage &made) {
                              openLongHistory(made, 3650);
                              RankChart &chart = chartOf(made);
                              chart.setFocus(Qt::MouseFocusReason);
                              chart.showDays({1800, 120});
                              chart.setSelectedDay(40);
                          }),
            researchScene("history-narrowed-week", nullptr,
                          [](ResearchStage &made) {
                              openLongHistory(made, 3650);
                              RankChart &chart = chartOf(made);
                              chart.setFocus(Qt::TabFocusReason);
                              chart.setSelectedDay(3500);
                              for (int i = 0; i < 10; ++i)
                                  QTest::keyClick(&chart, Qt::Key_Plus);
                          }),
            researchScene("history-low", nullptr, openLow),
            researchScene("history-low-end", nullptr, [](ResearchStage &made) {
                openLow(made);
                made.find<QScrollArea>("historySheetScroll")->verticalScrollBar()->setValue(5000);
            })};
}

} // namespace veltrix
