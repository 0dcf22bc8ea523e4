// SPDX-License-Identifier: GPL-3.0-or-later
// The menus of the dashboard, and what asks before it acts.
#include "ui/dashboard/dashboard_page.h"

#include "ui/dashboard/keyword_actions.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/dashboard/removal_question.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/symbols.h"

#include <QActionGroup>
#include <QHeaderView>
#include <QMenu>

#include <algorithm>

namespace veltrix
{

void DashboardPage::showRowMenu(const QPoint &globalPosition)
{
    const std::vector<int> rows = m_table->selectedRows();
    if (rows.empty())
        return;
    const DashboardKeywordRow row = m_model->entryAt(rows.front()).row;
    const bool one = rows.size() == 1;
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("rowMenu"));
    menu->setAccessibleName(one ? tr("Actions for %1").arg(row.keyword) : tr("Actions"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu](const QString &symbol, const QString &text) {
        return menu->addAction(symbolIcon(symbol), text);
    };
    if (one) {
        connect(add(QStringLiteral("lightbulb"), tr("Keyword Analysis")), &QAction::triggered, this,
                [this, row] { Q_EMIT analysisRequested(row); });
        QAction *apps = add(QStringLiteral("square.grid.2x2"), tr("View ranked apps"));
        apps->setWhatsThis(
            tr("Show ranked apps for %1 in %2").arg(row.keyword, storefrontName(row.country)));
        connect(apps, &QAction::triggered, this, [this, row] { Q_EMIT rankedAppsRequested(row); });
        QAction *history = add(QStringLiteral("chart.xyaxis.line"), tr("Ranking history"));
        history->setWhatsThis(tr("View ranking history for %1").arg(row.keyword));
        connect(history, &QAction::triggered, this, [this, row] { Q_EMIT historyRequested(row); });
        connect(add(QStringLiteral("person.2"), tr("Who is above you")), &QAction::triggered, this,
                [this, row] { Q_EMIT aboveYouRequested(row); });
        menu->addSeparator();
    }
    QAction *tags = add(QStringLiteral("tag"), tr("Tags…") + QStringLiteral("\tCtrl+T"));
    connect(tags, &QAction::triggered, this, &DashboardPage::editTags);
    QAction *refresh = add(QStringLiteral("arrow.clockwise"),
                           one ? tr("Refresh Keyword") : tr("Refresh Keywords"));
    connect(refresh, &QAction::triggered, this,
            [this, ids = m_table->selectedIds()] { m_actions->refresh(ids); });
    QAction *copy = add(QStringLiteral("doc.on.doc"), tr("Copy") + QStringLiteral("\tCtrl+C"));
    connect(copy, &QAction::triggered, m_table, &KeywordTableView::copy);
    menu->addSeparator();
    QAction *remove =
        add(QStringLiteral("trash"),
            one ? tr("Remove Keyword…") : tr("Remove %L1 Keywords…").arg(rows.size()));
    connect(remove, &QAction::triggered, this, &DashboardPage::removeSelected);
    menu->popup(globalPosition);
}

void DashboardPage::removeSelected()
{
    askToRemove(m_table->selectedIds());
}

void DashboardPage::askToRemove(const QList<QUuid> &ids)
{
    QStringList names;
    for (const QUuid &id : ids) {
        if (const auto keyword = m_store.trackedKeyword(id))
            names << keyword->keyword;
    }
    if (!names.isEmpty())
        ConfirmSheet::ask(m_table, removalQuestion(names),
                          [this, ids] { m_store.removeKeywords(ids); });
}

void DashboardPage::fillSortMenu(QMenu *menu)
{
    menu->clear();
    auto *columns = new QActionGroup(menu);
    for (const KeywordColumnInfo &info : keywordColumns()) {
        QAction *action = menu->addAction(info.headerText());
        action->setCheckable(true);
        action->setChecked(m_model->sortedBy() == info.column);
        columns->addAction(action);
        connect(action, &QAction::triggered, this, [this, column = int(info.column)] {
            m_table->horizontalHeader()->setSortIndicator(column, m_model->sortOrder());
        });
    }
    menu->addSeparator();
    auto *orders = new QActionGroup(menu);
    for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        QAction *action =
            menu->addAction(order == Qt::AscendingOrder ? tr("Ascending") : tr("Descending"));
        action->setCheckable(true);
        action->setChecked(m_model->sortOrder() == order);
        orders->addAction(action);
        connect(action, &QAction::triggered, this, [this, order] {
            m_table->horizontalHeader()->setSortIndicator(int(m_model->sortedBy()), order);
        });
    }
}

void DashboardPage::fillColumnMenu(QMenu *menu)
{
    menu->clear();
    const std::vector<KeywordColumn> shown = m_table->shownColumns();
    for (const KeywordColumnInfo &info : keywordColumns()) {
        QAction *action = menu->addAction(info.headerText());
        action->setCheckable(true);
        action->setChecked(std::find(shown.begin(), shown.end(), info.column) != shown.end());
        // A table without its keywords says nothing.
        action->setEnabled(info.column != KeywordColumn::Keyword);
        connect(action, &QAction::toggled, this, [this, column = info.column](bool visible) {
            m_table->setColumnVisible(column, visible);
        });
    }
    menu->addSeparator();
    connect(menu->addAction(tr("Reset Columns")), &QAction::triggered, this, [this] {
        m_table->setColumnLayout(ColumnLayout::standard());
        saveColumns();
    });
}

} // namespace veltrix
