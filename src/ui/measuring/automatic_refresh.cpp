// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/measuring/automatic_refresh.h"

#include "store/aso_store.h"
#include "ui/measuring/measuring_status.h"

namespace veltrix
{

AutomaticRefresh::AutomaticRefresh(ASOStore &store, MeasuringStatus &measuring, QObject *parent)
    : QObject(parent), m_refreshes(store.refreshes()),
      m_loop(store.clock(), [&store](std::stop_token stop) {
          return store.refreshes().refreshStale(std::nullopt, std::move(stop));
      })
{
    connect(&measuring, &MeasuringStatus::refreshRequested, this, [this] { m_loop.resume(); });
    connect(&measuring, &MeasuringStatus::refreshEnded, this,
            [this](const HistoryRefresh &end) { m_loop.refreshEnded(end); });
    connect(&measuring, &MeasuringStatus::stopRequested, this, [this] { m_loop.stopRefresh(); });
    connect(&store, &ASOStore::stateRead, this, &AutomaticRefresh::startOver);
}

void AutomaticRefresh::setDue(KeywordRefreshes::Due rule)
{
    if (rule == m_due)
        return;
    m_due = rule;
    m_refreshes.setDue(rule);
    startOver();
}

void AutomaticRefresh::startOver()
{
    if (!m_loop.isActive())
        return;
    m_loop.setActive(false);
    m_loop.setActive(true);
}

} // namespace veltrix
