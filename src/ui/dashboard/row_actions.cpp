// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/row_actions.h"

#include "model/dashboard_keyword_row.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/button.h"

#include <QHBoxLayout>

namespace veltrix
{

RowActions::RowActions(QWidget *parent)
    : QWidget(parent), m_rankedApps(new Button(Button::Kind::Plain,
                                               QStringLiteral("square.grid.2x2"), QString(), this)),
      m_history(
          new Button(Button::Kind::Plain, QStringLiteral("chart.xyaxis.line"), QString(), this)),
      m_more(new Button(Button::Kind::Plain, QStringLiteral("ellipsis"), QString(), this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (Button *button : {m_rankedApps, m_history, m_more}) {
        // The arrow keys stay with the table; the same actions are in its menu.
        button->setFocusPolicy(Qt::NoFocus);
        layout->addWidget(button);
    }
    m_rankedApps->setObjectName(QStringLiteral("rowRankedApps"));
    m_rankedApps->setToolTip(tr("View ranked apps"));
    m_history->setObjectName(QStringLiteral("rowHistory"));
    m_history->setToolTip(tr("Ranking history"));
    m_more->setObjectName(QStringLiteral("rowMore"));
    m_more->setToolTip(tr("More actions"));
    connect(m_rankedApps, &Button::clicked, this, &RowActions::rankedAppsRequested);
    connect(m_history, &Button::clicked, this, &RowActions::historyRequested);
    connect(m_more, &Button::clicked, this,
            [this] { Q_EMIT menuRequested(m_more->mapToGlobal(QPoint(0, m_more->height()))); });
    setRow({});
}

void RowActions::setExtent(Extent extent)
{
    m_rankedApps->setVisible(extent == Extent::All);
    m_history->setVisible(extent == Extent::All);
}

int RowActions::widthOf(Extent extent) const
{
    int width = m_more->sizeHint().width();
    if (extent == Extent::All)
        width += m_rankedApps->sizeHint().width() + m_history->sizeHint().width();
    return width;
}

void RowActions::setRow(const DashboardKeywordRow &row)
{
    m_rankedApps->setAccessibleName(
        tr("Show ranked apps for %1 in %2").arg(row.keyword, storefrontName(row.country)));
    m_history->setAccessibleName(tr("View ranking history for %1").arg(row.keyword));
    m_more->setAccessibleName(tr("More actions for %1").arg(row.keyword));
}

} // namespace veltrix
