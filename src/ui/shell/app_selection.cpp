// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/app_selection.h"

#include <algorithm>

namespace veltrix
{

AppSelection::AppSelection(ASOStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    connect(&store, &ASOStore::appsChanged, this, &AppSelection::followStore);
    followStore();
}

std::optional<AppProfile> AppSelection::app() const
{
    return m_id ? m_store.app(*m_id) : std::nullopt;
}

void AppSelection::select(std::optional<QUuid> id)
{
    m_id = id;
    Q_EMIT changed(id);
}

void AppSelection::selectNeighbour(Neighbour neighbour)
{
    const QList<AppProfile> &apps = m_store.apps();
    const auto chosen = std::find_if(apps.begin(), apps.end(),
                                     [this](const AppProfile &app) { return app.id == m_id; });
    if (chosen == apps.end() || apps.size() < 2)
        return;
    const auto step = neighbour == Neighbour::Next ? 1 : apps.size() - 1;
    select(apps[(chosen - apps.begin() + step) % apps.size()].id);
}

AppSelection::Counts AppSelection::counts() const
{
    if (!m_id)
        return {};
    return {int(m_store.keywordsOfApp(*m_id).size()), int(m_store.competitorsOfApp(*m_id).size())};
}

void AppSelection::followStore()
{
    if (app())
        return;
    const QList<AppProfile> &apps = m_store.apps();
    select(apps.isEmpty() ? std::nullopt : std::optional(apps.first().id));
}

} // namespace veltrix
