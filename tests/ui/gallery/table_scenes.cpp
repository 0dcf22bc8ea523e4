// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/gallery/table_scenes.h"

#include "ui/dashboard/dashboard_page.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/shell/app_selector.h"
#include "ui/support/ui_world.h"

#include <QApplication>
#include <QHeaderView>
#include <QTest>

namespace veltrix
{

namespace
{

/// A font of another size for as long as the scene lives.
class LargerFont
{
public:
    explicit LargerFont(double factor) : m_before(QApplication::font())
    {
        QFont font = m_before;
        font.setPixelSize(qRound(font.pixelSize() * factor));
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

struct TableWorld : UiWorld {
    TableWorld(const PersistedState &state, double fontFactor) : UiWorld(state), font(fontFactor) {}
    LargerFont font;
};

Scene tableScene(const char *name, QSize size, std::function<void(MainWindow &, UiWorld &)> act,
                 double fontFactor = 1)
{
    return {QString::fromLatin1(name), [size, act = std::move(act), fontFactor] {
                auto world = std::make_shared<TableWorld>(stateOfSeveralStorefronts(), fontFactor);
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

} // namespace

std::vector<Scene> tableScenes()
{
    const auto nothing = [](MainWindow &, UiWorld &) {
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
        tableScene("table-removed", {1280, 800}, remove),
        tableScene("table-removed-narrow", {800, 500}, remove),
    };
}

} // namespace veltrix
