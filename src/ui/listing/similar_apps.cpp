// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/similar_apps.h"

#include "scoring/app_keyword_check.h"

namespace veltrix
{

SimilarApps::SimilarApps(ASOStore &store, QObject *parent) : QObject(parent), m_store(store) {}

SimilarApps::~SimilarApps() = default;

QString SimilarApps::termFor(const ITunesAppResult &app)
{
    const QStringList phrases = keywordPhrases(app);
    return phrases.isEmpty() ? app.primaryGenreName.value_or(QString()).trimmed()
                             : phrases.constFirst();
}

void SimilarApps::start(const ITunesAppResult &app, const QString &country)
{
    m_app = app;
    m_country = country;
    retry();
}

void SimilarApps::retry()
{
    m_tasks.stop();
    m_apps.clear();
    m_error.clear();
    const QString term = termFor(m_app);
    m_phase = term.isEmpty() ? Phase::Found : Phase::Searching;
    Q_EMIT changed();
    if (m_phase == Phase::Searching)
        m_tasks.own(search(term, m_tasks.token()));
    else
        Q_EMIT settled();
}

Task<void> SimilarApps::search(QString term, std::stop_token stop)
{
    try {
        const QList<ITunesAppResult> results =
            co_await m_store.searchKeyword(term, m_country, searchLimit, stop);
        throwIfStopped(stop);
        for (const ITunesAppResult &result : results) {
            if (m_apps.size() < shownLimit && result.trackId != m_app.trackId)
                m_apps.append(result);
        }
        m_phase = Phase::Found;
    } catch (const Error &error) {
        m_error = error.description();
        m_phase = Phase::Failed;
    }
    throwIfStopped(stop);
    Q_EMIT changed();
    throwIfStopped(stop);
    Q_EMIT settled();
}

} // namespace veltrix
