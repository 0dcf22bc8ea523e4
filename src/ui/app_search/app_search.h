// SPDX-License-Identifier: GPL-3.0-or-later
// Finding an app to track: by name, App Store ID or link.
#pragma once

#include "store/aso_store.h"
#include "ui_kit/loading/loader.h"

namespace veltrix
{

/// The results of a name; none is a result too.
struct AppSearchResults {
    QString query;
    QString country;
    QList<ITunesAppResult> apps;
    /// Why there is none, in the store's words; empty where a name was searched.
    QString notFound = {};
    bool operator==(const AppSearchResults &) const = default;
};

/// The app search without its looks. A new search stops the one before.
class AppSearch final : public QObject
{
    Q_OBJECT

public:
    /// Results asked for when a name is searched.
    static constexpr std::int64_t resultLimit = 20;

    explicit AppSearch(ASOStore &store, QObject *parent = nullptr);

    /// Searches a name, or tracks the app at once when the text holds an ID. An empty text does
    /// nothing.
    void submit(const QString &text, const QString &country);
    /// The last search again.
    void retry();
    /// The last search again in another storefront; nothing before any.
    void searchIn(const QString &country);
    /// Tracks an app of the results.
    void track(const ITunesAppResult &result);

    [[nodiscard]] const Loadable<AppSearchResults> &state() const { return m_results.state(); }
    /// The app of that result is tracked already.
    [[nodiscard]] bool isTracked(const ITunesAppResult &result) const;

Q_SIGNALS:
    void stateChanged();
    void appTracked(const AppProfile &app);

private:
    /// Ends with Cancelled when an app was tracked: then there are no results to show.
    Task<AppSearchResults> search(QString text, QString country, std::stop_token stop);

    ASOStore &m_store;
    QString m_text;
    Loader<AppSearchResults> m_results;
};

} // namespace veltrix
