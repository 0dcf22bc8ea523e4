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

AppSearch::AppSearch(ASOStore &store, QObject *parent) : QObject(parent), m_store(store) {}

AppSearch::~AppSearch() = default;

void AppSearch::setState(AppSearchState state)
{
    m_state = std::move(state);
    Q_EMIT stateChanged();
}

void AppSearch::submit(const QString &text, const QString &country)
{
    if (text.trimmed().isEmpty())
        return;
    m_lastText = text;
    m_lastCountry = country;
    m_tasks.stop();
    setState(app_search_state::Searching());
    m_tasks.own(run(text, country, m_tasks.token()));
}

void AppSearch::retry()
{
    submit(m_lastText, m_lastCountry);
}

Task<void> AppSearch::run(QString text, QString country, std::stop_token stop)
{
    const AppSearchInput input = parseAppSearch(text);
    try {
        if (!input.trackId) {
            co_await searchName(input.name, country, stop);
            co_return;
        }
        const AppProfile app = co_await m_store.addApp(*input.trackId, country, stop);
        setState(app_search_state::Idle());
        Q_EMIT appTracked(app);
        co_return;
    } catch (const StoreError &error) {
        // Digits in a name make no ID: "Asphalt 9".
        if (error.code() != notFound || input.origin != AppSearchInput::Origin::CollectedDigits) {
            setState(app_search_state::Failed{error.description()});
            co_return;
        }
    } catch (const Error &error) {
        setState(app_search_state::Failed{error.description()});
        co_return;
    }
    try {
        co_await searchName(input.name, country, stop);
    } catch (const Error &error) {
        setState(app_search_state::Failed{error.description()});
    }
}

Task<void> AppSearch::searchName(QString name, QString country, std::stop_token stop)
{
    const QList<ITunesAppResult> results =
        co_await m_store.searchApps(name, country, resultLimit, stop);
    setState(app_search_state::Found{name, country, results});
}

void AppSearch::track(const ITunesAppResult &result)
{
    const auto *found = std::get_if<app_search_state::Found>(&m_state);
    const QString country = found ? found->country : m_lastCountry;
    try {
        Q_EMIT appTracked(m_store.addApp(result, country));
    } catch (const Error &error) {
        setState(app_search_state::Failed{error.description()});
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
