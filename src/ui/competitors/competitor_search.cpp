// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/competitor_search.h"

#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"

namespace veltrix
{

CompetitorSearch::CompetitorSearch(ASOStore &store, QObject *parent)
    : QObject(parent), m_store(store)
{
    connect(&m_found, &LoaderSignals::changed, this, &CompetitorSearch::changed);
}

void CompetitorSearch::setCountry(const QString &country)
{
    m_country = country;
    if (!m_term.isEmpty())
        submit(m_term);
}

void CompetitorSearch::submit(const QString &term)
{
    m_term = term.trimmed();
    m_limit = firstLimit;
    m_found.clear();
    if (!m_term.isEmpty())
        search();
}

void CompetitorSearch::retry()
{
    m_found.retry();
}

void CompetitorSearch::showAll()
{
    m_limit = fullLimit;
    search();
}

void CompetitorSearch::search()
{
    m_found.refresh([&store = m_store, term = m_term, country = m_country,
                     limit = m_limit](std::stop_token stop) {
        return store.searchApps(term, country, limit, stop);
    });
}

QList<ITunesAppResult> CompetitorSearch::results() const
{
    const QList<ITunesAppResult> *found = state().value();
    return found ? *found : QList<ITunesAppResult>();
}

QString CompetitorSearch::title() const
{
    const QString place = storefrontName(m_country);
    const qsizetype count = results().size();
    if (count == 0)
        return tr("“%1” in %2").arg(inSentence(m_term), place);
    return tr("%1 results for “%2” in %3")
        .arg(QLocale().toString(count), inSentence(m_term), place);
}

CompetitorSearch::ShowAll CompetitorSearch::showAllState() const
{
    const qsizetype count = results().size();
    if (state().isUnderWay())
        return count > 0 ? ShowAll::UnderWay : ShowAll::Hidden;
    return m_limit == firstLimit && count >= firstLimit ? ShowAll::Offered : ShowAll::Hidden;
}

QString CompetitorSearch::problem() const
{
    return results().isEmpty() || state().isUnderWay() ? QString() : state().error();
}

} // namespace veltrix
