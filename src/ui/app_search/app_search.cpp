// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/app_search/app_search.h"

#include "ui/app_search/app_search_input.h"

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int notFound = 404;

}

AppSearch::AppSearch(ASOStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    connect(&m_results, &LoaderSignals::changed, this, &AppSearch::stateChanged);
}

void AppSearch::submit(const QString &text, const QString &country)
{
    if (text.trimmed().isEmpty())
        return;
    m_text = text;
    m_results.ask(
        [this, text, country](std::stop_token stop) { return search(text, country, stop); });
}

void AppSearch::retry()
{
    m_results.retry();
}

void AppSearch::searchIn(const QString &country)
{
    if (!state().is<NotAsked>())
        submit(m_text, country);
}

Task<AppSearchResults> AppSearch::search(QString text, QString country, std::stop_token stop)
{
    const AppSearchInput input = parseAppSearch(text);
    if (input.trackId) {
        try {
            const AppProfile app = co_await m_store.addApp(*input.trackId, country, stop);
            m_results.clear();
            Q_EMIT appTracked(app);
            throw Cancelled();
        } catch (const StoreError &error) {
            if (error.code() != notFound)
                throw;
            // Digits in a name make no ID: "Asphalt 9".
            if (input.origin != AppSearchInput::Origin::CollectedDigits)
                co_return AppSearchResults{input.name, country, {}, error.description()};
        }
    }
    const QList<ITunesAppResult> apps =
        co_await m_store.searchApps(input.name, country, resultLimit, stop);
    co_return AppSearchResults{input.name, country, apps};
}

void AppSearch::track(const ITunesAppResult &result)
{
    const AppSearchResults *shown = state().value();
    if (!shown)
        return;
    try {
        Q_EMIT appTracked(m_store.addApp(result, shown->country));
    } catch (const Error &error) {
        m_results.fail(error.description());
    }
}

bool AppSearch::isTracked(const ITunesAppResult &result) const
{
    const QList<AppProfile> &apps = m_store.apps();
    return result.trackId && std::any_of(apps.begin(), apps.end(), [&](const AppProfile &app) {
               return app.trackId == *result.trackId;
           });
}

} // namespace veltrix
