// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_search.h"

namespace veltrix
{

CompetitorSearch::CompetitorSearch(ASOStore &store, QObject *parent)
    : QObject(parent), m_store(store)
{
}

CompetitorSearch::~CompetitorSearch() = default;

void CompetitorSearch::submit(QString term, QString country)
{
    clear();
    m_state.lastSearchTerm = term.trimmed();
    m_state.country = country;
    if (!m_state.lastSearchTerm.isEmpty())
        run();
}

void CompetitorSearch::retry()
{
    if (!m_state.lastSearchTerm.isEmpty())
        run();
}

void CompetitorSearch::showAll()
{
    m_state.showsFullResults = true;
    retry();
}

void CompetitorSearch::clear()
{
    m_tasks.stop();
    m_state = {};
    Q_EMIT changed();
}

void CompetitorSearch::run()
{
    m_tasks.stop();
    m_state.isLoading = true;
    m_state.error.reset();
    Q_EMIT changed();
    m_tasks.own(search(m_state.showsFullResults ? fullLimit : firstLimit, m_tasks.token()));
}

Task<void> CompetitorSearch::search(std::int64_t limit, std::stop_token stop)
{
    try {
        const QList<ITunesAppResult> results =
            co_await m_store.searchApps(m_state.lastSearchTerm, m_state.country, limit, stop);
        throwIfStopped(stop);
        m_state.results = results;
    } catch (const Error &error) {
        m_state.error = error.description();
    }
    throwIfStopped(stop);
    m_state.isLoading = false;
    m_state.hasSearched = true;
    Q_EMIT changed();
}

} // namespace veltrix
