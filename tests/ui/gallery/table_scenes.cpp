// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/table_scenes.h"

#include "ui/dashboard/dashboard_page.h"
#include "ui/dashboard/keyword_filter.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/shell/app_selector.h"
#include "ui/support/ui_world.h"
#include "ui_kit/theme/typography.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>

namespace veltrix
{

namespace
{

/// The font at least this many times as large as usual, for as long as the scene lives.
class LargerFont
{
public:
    explicit LargerFont(double factor) : m_before(QApplication::font())
    {
        constexpr int usual = 13;
        QFont font = m_before;
        font.setPixelSize(std::max(font.pixelSize(), qRound(usual * factor)));
        QApplication::setFont(font);
    }
    ~LargerFont() { QApplication::setFont(m_before); }
    LargerFont(const LargerFont &) = delete;
    LargerFont &operator=(const LargerFont &) = delete;

private:
    QFont m_before;
};

/// The sample with some of its keywords in further storefronts.
PersistedState stateOfSeveralStorefronts()
{
    PersistedState state = sampleState(VirtualClock().now(), FakePopularity().version);
    const QList<TrackedKeyword> keywords = state.trackedKeywords;
    for (const TrackedKeyword &keyword : keywords) {
        if (keyword.appId != state.apps.first().id || keyword.keyword.contains(u'l'))
            continue;
        for (const char *country : {"GB", "JP"}) {
            TrackedKeyword elsewhere = keyword;
            elsewhere.id = QUuid::createUuidV5(keyword.id, QByteArray(country));
            elsewhere.country = QString::fromLatin1(country);
            for (size_t i = 0, count = state.snapshots.size(); i < count; ++i) {
                if (state.snapshots[i]->trackedKeywordId != keyword.id)
                    continue;
                auto copy = std::make_shared<KeywordSnapshot>(*state.snapshots[i]);
                copy->id = QUuid::createUuidV5(copy->id, QByteArray(country));
                copy->trackedKeywordId = elsewhere.id;
                copy->country = elsewhere.country;
                state.snapshots.push_back(std::move(copy));
            }
            state.trackedKeywords.append(elsewhere);
        }
    }
    return state;
}

/// The same with checks of weeks ago: of most keywords, some of them without a rank.
PersistedState stateWithPast()
{
    PersistedState state = stateOfSeveralStorefronts();
    const Date now = VirtualClock().now();
    for (size_t i = 0, count = state.snapshots.size(); i < count; ++i) {
        const KeywordSnapshot &newest = *state.snapshots[i];
        if (utcDay(newest.fetchedAt) != utcDay(now) || i % 7 == 0)
            continue;
        for (const int daysAgo : {7, 18, 30, 200}) {
            auto older = std::make_shared<KeywordSnapshot>(newest);
            older->id = QUuid::createUuidV5(newest.id, QByteArray::number(daysAgo));
            older->fetchedAt = newest.fetchedAt - Seconds(daysAgo * secondsPerDay);
            const std::int64_t before =
                newest.position.value_or(40) + std::int64_t(i * size_t(daysAgo)) % 23 - 6;
            older->position = std::max<std::int64_t>(before, 1);
            if (daysAgo == 30 && i % 3 == 0)
                older->position.reset();
            if (daysAgo == 7 && i % 5 == 0)
                older->position = newest.position;
            state.snapshots.push_back(std::move(older));
        }
    }
    return state;
}

struct TableWorld : UiWorld {
    TableWorld(const PersistedState &state, double fontFactor) : UiWorld(state), font(fontFactor) {}
    LargerFont font;
};

Scene tableScene(const char *name, QSize size, std::function<void(MainWindow &, UiWorld &)> act,
                 double fontFactor = 1, PersistedState (*state)() = stateOfSeveralStorefronts)
{
    return {QString::fromLatin1(name), [size, act = std::move(act), fontFactor, state] {
                auto world = std::make_shared<TableWorld>(state(), fontFactor);
                auto window = std::make_unique<MainWindow>(world->collaborators());
                window->resize(size);
                window->show();
                QCoreApplication::processEvents();
                act(*window, *world);
                return Stage{world, std::move(window)};
            }};
}

void point(MainWindow &window, int row, KeywordColumn column)
{
    KeywordTableView &table = window.dashboard().table();
    QTest::mouseMove(table.viewport(),
                     table.visualRect(table.model()->index(row, int(column))).center());
}

/// Gives some columns more room than the window has.
void widen(MainWindow &window)
{
    QHeaderView *header = window.dashboard().table().horizontalHeader();
    for (const KeywordColumn column :
         {KeywordColumn::Target, KeywordColumn::Popularity, KeywordColumn::Position})
        header->resizeSection(int(column), header->sectionSize(int(column)) + 120);
    header->resizeSection(int(KeywordColumn::Keyword), 220);
}

} // namespace

std::vector<Scene> tableScenes()
{
    const auto filtered = [](QuickFilter filter) {
        return [filter](MainWindow &window, UiWorld &) {
            window.dashboard().filter().setQuick(filter);
        };
    };
    const auto scrolled = [](MainWindow &window, UiWorld &) {
        widen(window);
        window.dashboard().table().QTableView::selectRow(2);
        window.dashboard().table().horizontalScrollBar()->setValue(200);
        point(window, 4, KeywordColumn::Popularity);
    };
    const auto nothing = [](MainWindow &, UiWorld &) {
    };
    const auto changing = [](MainWindow &window, UiWorld &) {
        KeywordTableView &table = window.dashboard().table();
        for (const KeywordColumn column :
             {KeywordColumn::In7Days, KeywordColumn::In30Days, KeywordColumn::Best})
            table.setColumnVisible(column, true);
        table.horizontalHeader()->resizeSection(int(KeywordColumn::Position),
                                                scaledToFont(110, table.font()));
        // The keywords take what is left.
        table.setColumnVisible(KeywordColumn::Apps, false);
        table.QTableView::selectRow(3);
    };
    const auto changingScrolled = [changing](MainWindow &window, UiWorld &world) {
        changing(window, world);
        QCoreApplication::processEvents();
        QScrollBar *sideways = window.dashboard().table().horizontalScrollBar();
        sideways->setValue(sideways->maximum());
    };
    const auto remove = [](MainWindow &window, UiWorld &world) {
        window.dashboard().table().QTableView::selectRow(4);
        QList<QUuid> ids;
        for (const TrackedKeyword &keyword : world.store->trackedKeywords()) {
            if (keyword.country == QStringLiteral("JP"))
                ids.append(keyword.id);
        }
        world.client->holds = true;
        world.store->queueKeywordRefreshes(world.store->trackedKeywords());
        world.store->removeKeywords(ids);
    };
    return {
        tableScene("table-storefronts", {1280, 800},
                   [](MainWindow &window, UiWorld &) {
                       window.dashboard().table().QTableView::selectRow(2);
                       point(window, 2, KeywordColumn::Target);
                   }),
        tableScene("table-storefronts-narrow", {1024, 700},
                   [](MainWindow &window, UiWorld &) { point(window, 3, KeywordColumn::Target); }),
        tableScene("table-large-font", {1280, 800}, nothing, 1.5),
        tableScene(
            "table-large-font-narrow", {1024, 700},
            [](MainWindow &window, UiWorld &) { point(window, 1, KeywordColumn::Target); }, 1.5),
        tableScene("quick-filter-top-10", {1280, 800}, filtered(QuickFilter::Top10)),
        tableScene("quick-filter-risen", {1280, 800}, filtered(QuickFilter::Risen)),
        tableScene("quick-filter-fallen", {1280, 800}, filtered(QuickFilter::Fallen)),
        tableScene("quick-filter-not-ranked", {1280, 800}, filtered(QuickFilter::NotRanked)),
        tableScene("quick-filter-not-measured", {1280, 800},
                   filtered(QuickFilter::NotMeasuredToday)),
        tableScene("quick-filter-empty", {1280, 800},
                   [](MainWindow &window, UiWorld &) {
                       window.dashboard().filter().setStorefront(QStringLiteral("DE"));
                       window.dashboard().filter().setQuick(QuickFilter::Fallen);
                   }),
        tableScene("quick-filter-narrow", {800, 500}, filtered(QuickFilter::NotMeasuredToday)),
        tableScene("quick-filter-large-font", {1024, 700}, filtered(QuickFilter::Risen), 1.5),
        tableScene("table-held", {1024, 700}, scrolled),
        tableScene("table-held-small", {800, 500}, scrolled),
        tableScene("table-change", {1280, 800}, changing, 1, stateWithPast),
        tableScene("table-change-narrow", {1024, 700}, changingScrolled, 1, stateWithPast),
        tableScene("table-change-small", {800, 500}, changingScrolled, 1, stateWithPast),
        tableScene("table-change-large-font", {1280, 800}, changingScrolled, 1.5, stateWithPast),
        tableScene("table-removed", {1280, 800}, remove),
        tableScene("table-removed-narrow", {800, 500}, remove),
    };
}

} // namespace veltrix
