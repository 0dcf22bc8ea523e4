// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/similar_apps.h"

#include "scoring/app_keyword_check.h"

namespace veltrix
{

SimilarApps::SimilarApps(ASOStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    connect(&m_apps, &LoaderSignals::changed, this, &SimilarApps::changed);
}

QString SimilarApps::termFor(const ITunesAppResult &app)
{
    const QStringList phrases = keywordPhrases(app);
    return phrases.isEmpty() ? app.primaryGenreName.value_or(QString()).trimmed()
                             : phrases.constFirst();
}

void SimilarApps::start(const ITunesAppResult &app, const QString &country)
{
    m_apps.ask([this, app, country](std::stop_token stop) { return search(app, country, stop); });
}

void SimilarApps::retry()
{
    m_apps.retry();
}

Task<QList<ITunesAppResult>> SimilarApps::search(ITunesAppResult app, QString country,
                                                 std::stop_token stop)
{
    QList<ITunesAppResult> similar;
    const QString term = termFor(app);
    if (term.isEmpty())
        co_return similar;
    const QList<ITunesAppResult> results =
        co_await m_store.searchKeyword(term, country, searchLimit, stop);
    for (const ITunesAppResult &result : results) {
        if (similar.size() < shownLimit && result.trackId != app.trackId)
            similar.append(result);
    }
    co_return similar;
}

} // namespace veltrix
