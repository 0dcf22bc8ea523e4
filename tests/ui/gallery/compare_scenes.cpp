// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/compare_scenes.h"

#include "ui/gallery/research_stage.h"
#include "ui/history/mark_row_view.h"
#include "ui/history/rank_chart.h"
#include "ui/history/ranking_history_content.h"
#include "ui/history/ranking_history_sheet.h"
#include "ui_kit/widgets/text_field.h"

#include <QCoreApplication>
#include <QEnterEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <random>

namespace veltrix
{

namespace
{

constexpr std::array rivalNames{"Foxglove Film Camera",
                                "Saffronmoor Camera",
                                "Mosswick Retro Camera",
                                "Quiet Aperture",
                                "Grainy",
                                "Dovetail Cam",
                                "Hazel Presets",
                                "Lumière Film Lab",
                                "Pocket Darkroom",
                                "Emulsion",
                                "Velvet 35",
                                "Kodalith Studio for Photographers"};

/// Ranks that wander from one to another, a day each.
std::vector<std::int64_t> wandering(size_t days, double from, double to, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<std::int64_t> ranks;
    double aside = 0;
    for (size_t day = 0; day < days; ++day) {
        aside = std::clamp(aside + (double(random() % 100) - 49.5) / 40, -2.5, 2.5);
        const double way = days > 1 ? double(day) / double(days - 1) : 1;
        ranks.push_back(std::max<std::int64_t>(1, std::llround(from + (to - from) * way + aside)));
    }
    return ranks;
}

/// A history of so many days up to now, with as many competitors.
struct ComparedWorld {
    RankingHistoryContent::State state;

    ComparedWorld(Date now, size_t days, int rivals)
    {
        state.now = now;
        const std::int64_t first = utcDay(now) - std::int64_t(days) + 1;
        const auto own = wandering(days, 29, 3, 5);
        std::vector<std::vector<std::int64_t>> others;
        for (int i = 0; i < rivals; ++i)
            others.push_back(wandering(days, 7 + i * 5.5, 5 + i * 4.5, unsigned(i + 11)));
        std::vector<RankingTimeline::Observation> checks;
        for (size_t day = 0; day < days; ++day) {
            const Date date = startOfUtcDay(first + std::int64_t(day)) + Seconds(36'000);
            // A gap each way: one check that found nothing, one day without a check.
            if (day % 47 == 31)
                continue;
            checks.push_back({QUuid::createUuid(), date,
                              day % 53 == 12 ? std::nullopt : std::optional(own[day])});
            KeywordStandings measured;
            measured.fetchedAt = date;
            for (int i = 0; i < rivals; ++i) {
                // The third came later.
                if (i == 2 && day < days / 2)
                    continue;
                measured.rivals.push_back({id(i), day % 61 == 40 + size_t(i)
                                                      ? std::nullopt
                                                      : std::optional(others[size_t(i)][day])});
            }
            state.comparison.standings.push_back(measured);
        }
        state.timeline = RankingTimeline(checks, now);
        state.comparison.appName = QStringLiteral("Lumen Photo Editor");
        state.comparison.storefront = QStringLiteral("US");
        for (int i = 0; i < rivals; ++i) {
            TrackedCompetitor competitor;
            competitor.id = id(i);
            competitor.trackId = 9'000 + i;
            competitor.name = QString::fromUtf8(rivalNames[size_t(i) % rivalNames.size()]);
            competitor.country = state.comparison.storefront;
            state.comparison.competitors.append(competitor);
        }
    }

    static QUuid id(int rival) { return {quint32(rival), 0, 0, 0, 0, 0, 0, 0, 0, 0, 9}; }

    void note(int daysAgo, const char *words)
    {
        state.comparison.notes.append({QUuid::createUuid(), QUuid(), utcDay(state.now) - daysAgo,
                                       QString::fromUtf8(words), state.now});
    }
    void version(int daysAgo, const char *version)
    {
        state.comparison.listing.changes.push_back(
            {ListingChangeKind::Version, state.now - Seconds(daysAgo * secondsPerDay),
             QStringLiteral("US"), QString(), QString::fromUtf8(version)});
    }
};

RankChart &shown(ResearchStage &made, const ComparedWorld &world, int range = 2)
{
    // So that the looks begin with the first one.
    const QList<TrackedCompetitor> before = made.world->store->competitors();
    for (const TrackedCompetitor &saved : before)
        made.world->store->removeCompetitor(saved.id);
    auto *sheet = new RankingHistorySheet(*made.world->store, made.world->files,
                                          made.world->row("collage maker"));
    openSheet(made.window.get(), sheet);
    QCoreApplication::processEvents();
    made.find<RankingHistoryContent>()->setState(world.state);
    made.find<QAbstractButton>(qPrintable(QStringLiteral("historyRange%1").arg(range)))->click();
    QCoreApplication::processEvents();
    made.window->grab();
    return *made.find<RankChart>();
}

ComparedWorld usual(const ResearchStage &made)
{
    ComparedWorld world(made.world->clock->now(), 120, 6);
    world.note(59, "New subtitle");
    world.version(19, "3.2");
    world.state.comparison.rivalListings.insert(
        ComparedWorld::id(0),
        {std::nullopt,
         {{ListingChangeKind::Price, world.state.now - Seconds(38 * secondsPerDay),
           QStringLiteral("US"), QStringLiteral("$1.99"), QStringLiteral("Free")}}});
    return world;
}

void turn(ResearchStage &made, int rival)
{
    made.find<QAbstractButton>(qPrintable(QStringLiteral("historyLine%1").arg(9'000 + rival)))
        ->click();
}

void writeNote(ResearchStage &made, const char *words)
{
    RankChart &chart = shown(made, usual(made));
    chart.setFocus(Qt::TabFocusReason);
    chart.setSelectedDay(52);
    QTest::keyClick(&chart, Qt::Key_N);
    made.find<TextField>("noteText")->setText(QString::fromUtf8(words));
    QCoreApplication::processEvents();
}

std::vector<Scene> chartScenes()
{
    return {researchScene("compare", nullptr,
                          [](ResearchStage &made) { shown(made, usual(made)).setSelectedDay(62); }),
            researchScene("compare-latest", nullptr,
                          [](ResearchStage &made) { shown(made, usual(made), 0); }),
            researchScene("compare-dimmed", nullptr,
                          [](ResearchStage &made) { shown(made, usual(made)).emphasize(9'001); }),
            researchScene(
                "compare-keyboard", nullptr,
                [](ResearchStage &made) {
                    shown(made, usual(made)).setSelectedDay(62);
                    made.window->setAttribute(Qt::WA_KeyboardFocusChange);
                    made.find<QAbstractButton>("historyLine9001")->setFocus(Qt::TabFocusReason);
                }),
            researchScene("compare-begins-later", nullptr,
                          [](ResearchStage &made) {
                              shown(made, ComparedWorld(made.world->clock->now(), 60, 4));
                              for (const int off : {0, 1})
                                  turn(made, off);
                          }),
            researchScene("compare-twelve", nullptr,
                          [](ResearchStage &made) {
                              shown(made, ComparedWorld(made.world->clock->now(), 365, 12), 3);
                              for (int rival = 3; rival < 12; ++rival)
                                  turn(made, rival);
                          }),
            researchScene("compare-none", nullptr,
                          [](ResearchStage &made) {
                              shown(made, ComparedWorld(made.world->clock->now(), 120, 0));
                          }),
            researchScene("compare-never-ranked", nullptr, [](ResearchStage &made) {
                ComparedWorld world(made.world->clock->now(), 120, 3);
                for (KeywordStandings &measured : world.state.comparison.standings)
                    measured.rivals[0].rank.reset();
                shown(made, world);
                turn(made, 0);
            })};
}

std::vector<Scene> noteScenes()
{
    return {
        researchScene("compare-notes-touch", nullptr,
                      [](ResearchStage &made) {
                          ComparedWorld world = usual(made);
                          for (const int daysAgo : {84, 58, 57, 56, 40, 21, 20, 3, 0})
                              world.note(daysAgo, "Shorter title and a first screenshot");
                          shown(made, world);
                      }),
        researchScene("compare-note-focus", nullptr,
                      [](ResearchStage &made) {
                          shown(made, usual(made));
                          made.window->setAttribute(Qt::WA_KeyboardFocusChange);
                          made.find<QAbstractButton>("historyMark0")->setFocus(Qt::TabFocusReason);
                      }),
        researchScene("compare-note-new", nullptr,
                      [](ResearchStage &made) { writeNote(made, "New icon, A of the test"); }),
        researchScene("compare-note-empty", nullptr,
                      [](ResearchStage &made) {
                          writeNote(made, " ");
                          made.click("noteSave");
                      }),
        researchScene("compare-note-long", nullptr,
                      [](ResearchStage &made) {
                          writeNote(made, QByteArray("New subtitle ").repeated(20).constData());
                      }),
        researchScene("compare-note-removed", nullptr, [](ResearchStage &made) {
            const AppNote note = made.world->store->putNote(
                {QUuid(), made.world->appId(), utcDay(made.world->clock->now()) - 5,
                 QStringLiteral("New subtitle"), made.world->clock->now()});
            openSheet(made.window.get(),
                      new RankingHistorySheet(*made.world->store, made.world->files,
                                              made.world->row("collage maker")));
            QCoreApplication::processEvents();
            made.window->grab();
            made.find<MarkRowView>()->findChild<QAbstractButton *>()->click();
            made.click("noteRemove");
        })};
}

std::vector<Scene> roomScenes()
{
    const auto narrow = [](ResearchStage &made) {
        made.window->resize(800, 500);
        shown(made, usual(made)).setSelectedDay(62);
    };
    return {
        researchScene("compare-narrow", nullptr, narrow),
        researchScene(
            "compare-narrow-end", nullptr,
            [narrow](ResearchStage &made) {
                narrow(made);
                made.find<QScrollArea>("historySheetScroll")->verticalScrollBar()->setValue(5000);
            }),
        researchScene("compare-unreadable", nullptr, [](ResearchStage &made) {
            ComparedWorld world(made.world->clock->now(), 120, 4);
            world.state.comparison.standings.clear();
            world.state.comparison.problem =
                QStringLiteral("Ranks and changes of competitors couldn’t be read. The database "
                               "“history.sqlite” is damaged.");
            shown(made, world);
        })};
}

} // namespace

std::vector<Scene> compareScenes()
{
    std::vector<Scene> scenes = chartScenes();
    for (const auto &part : {noteScenes(), roomScenes()})
        scenes.insert(scenes.end(), part.begin(), part.end());
    return scenes;
}

} // namespace veltrix
