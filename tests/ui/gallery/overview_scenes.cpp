// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/overview_scenes.h"

#include "ui/overview/movers_table.h"
#include "ui/overview/overview_page.h"
#include "ui/support/overview_state.h"
#include "ui/support/ui_world.h"
#include "ui_kit/widgets/segmented_control.h"
#include "ui_kit/widgets/text_field.h"

#include <QApplication>
#include <QTest>

#include <algorithm>

namespace veltrix
{

namespace
{

/// A font of another size for as long as the scene lives.
class ScaledFont
{
public:
    explicit ScaledFont(double factor) : m_before(QApplication::font())
    {
        QFont font = m_before;
        // Of the standard font: the audit enlarges scenes, too, and these are large already.
        font.setPixelSize(std::max(font.pixelSize(), qRound(13 * factor)));
        QApplication::setFont(font);
    }
    ~ScaledFont() { QApplication::setFont(m_before); }
    ScaledFont(const ScaledFont &) = delete;
    ScaledFont &operator=(const ScaledFont &) = delete;

private:
    QFont m_before;
};

struct OverviewWorld : UiWorld {
    OverviewWorld(const PersistedState &state, double fontFactor) : UiWorld(state), font(fontFactor)
    {
    }
    ScaledFont font;
};

using State = std::function<PersistedState(Date now, const QString &version)>;
using Act = std::function<void(MainWindow &window, UiWorld &world)>;

struct Look {
    QSize size{1280, 800};
    double fontFactor = 1;
};

Scene scene(const char *name, State state, Act act = {}, Look look = {})
{
    return {QString::fromLatin1(name), [=] {
                auto world = std::make_shared<OverviewWorld>(
                    state(VirtualClock().now(), FakePopularity().version), look.fontFactor);
                auto window = std::make_unique<MainWindow>(world->collaborators());
                window->resize(look.size);
                window->show();
                QCoreApplication::processEvents();
                window->showWorkspace(Workspace::Overview);
                QCoreApplication::processEvents();
                if (act)
                    act(*window, *world);
                return Stage{world, std::move(window)};
            }};
}

State ranked(std::vector<RankedApp> apps)
{
    return [apps = std::move(apps)](Date now, const QString &version) {
        return stateOf(apps, now, version);
    };
}

State many(int apps)
{
    return [apps](Date now, const QString &version) {
        return manyRankedApps(apps, 4, 9, now, version);
    };
}

/// All keywords as they stood on the day before yesterday.
std::vector<RankedApp> withoutMoves()
{
    std::vector<RankedApp> apps = fourRankedApps();
    for (RankedApp &app : apps) {
        for (RankedKeyword &keyword : app.keywords)
            keyword.ranks.back() = keyword.ranks[keyword.ranks.size() - 2];
    }
    return apps;
}

std::vector<RankedApp> unmeasured()
{
    std::vector<RankedApp> apps = fourRankedApps();
    for (RankedApp &app : apps) {
        for (RankedKeyword &keyword : app.keywords)
            keyword.ranks.clear();
    }
    return apps;
}

void selectMover(MainWindow &window, UiWorld &)
{
    MoversTable &table = window.overview().table();
    table.setFocus(Qt::TabFocusReason);
    table.QTableView::selectRow(2);
}

void search(MainWindow &window, const char *text)
{
    auto *field = window.findChild<TextField *>(QStringLiteral("overviewSearch"));
    field->setText(QString::fromUtf8(text));
    QTest::keyClick(field, Qt::Key_Return);
}

} // namespace

std::vector<Scene> overviewScenes()
{
    const Look narrow{{800, 500}};
    return {
        scene("overview", ranked(fourRankedApps()), selectMover),
        scene("overview-one", ranked({fourRankedApps().front()})),
        scene("overview-empty", [](Date, const QString &) { return PersistedState(); }),
        scene("overview-100", many(100)),
        scene("overview-100-all", many(100),
              [](MainWindow &window, UiWorld &) {
                  QTest::mouseClick(window.findChild<QWidget *>(QStringLiteral("showAllApps")),
                                    Qt::LeftButton);
              }),
        scene("overview-unmeasured", ranked(unmeasured())),
        scene("overview-unmoved", ranked(withoutMoves())),
        scene("overview-month", ranked(fourRankedApps()),
              [](MainWindow &window, UiWorld &) {
                  auto *period =
                      window.findChild<SegmentedControl *>(QStringLiteral("overviewPeriod"));
                  period->choose(2);
              }),
        scene("overview-found", ranked(fourRankedApps()),
              [](MainWindow &window, UiWorld &) { search(window, "budget"); }),
        scene("overview-not-found", ranked(fourRankedApps()),
              [](MainWindow &window, UiWorld &) { search(window, "zzz"); }),
        scene("overview-narrow", ranked(fourRankedApps()), {}, narrow),
        scene("overview-narrow-movers", ranked(fourRankedApps()), selectMover, narrow),
        scene("overview-large-font", ranked(fourRankedApps()), {}, {{1280, 800}, 1.5}),
        scene("overview-large-font-narrow", ranked(fourRankedApps()), selectMover,
              {{800, 500}, 1.5}),
        scene("overview-measuring", ranked(fourRankedApps()),
              [](MainWindow &window, UiWorld &world) {
                  world.client->holds = true;
                  world.clock->advance(Seconds(secondsPerDay));
                  QTest::keyClick(&window, Qt::Key_F5);
              }),
    };
}

} // namespace veltrix
