// SPDX-License-Identifier: GPL-3.0-or-later
// Finding an app to track: by name, App Store ID or link.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"

#include <QObject>

#include <variant>

namespace veltrix
{

/// What the app search shows. Exactly one of these holds at a time.
namespace app_search_state
{
struct Idle {
    bool operator==(const Idle &) const = default;
};
struct Searching {
    bool operator==(const Searching &) const = default;
};
struct Failed {
    QString message;
    bool operator==(const Failed &) const = default;
};
/// The results of a name; none is a result too.
struct Found {
    QString query;
    QString country;
    QList<ITunesAppResult> results;
    bool operator==(const Found &) const = default;
};
} // namespace app_search_state

using AppSearchState = std::variant<app_search_state::Idle, app_search_state::Searching,
                                    app_search_state::Failed, app_search_state::Found>;

/// The app search without its looks. A new search stops the one before.
class AppSearch final : public QObject
{
    Q_OBJECT

public:
    /// Results asked for when a name is searched.
    static constexpr std::int64_t resultLimit = 20;

    explicit AppSearch(ASOStore &store, QObject *parent = nullptr);
    ~AppSearch() override;

    /// Searches a name, or tracks the app at once when the text holds an ID. An empty text does
    /// nothing.
    void submit(const QString &text, const QString &country);
    /// The last search again.
    void retry();
    /// Tracks an app of the results.
    void track(const ITunesAppResult &result);

    [[nodiscard]] const AppSearchState &state() const { return m_state; }
    /// The app of that result is tracked already.
    [[nodiscard]] bool isTracked(const ITunesAppResult &result) const;

Q_SIGNALS:
    void stateChanged();
    void appTracked(const AppProfile &app);

private:
    Task<void> run(QString text, QString country, std::stop_token stop);
    Task<void> searchName(QString name, QString country, std::stop_token stop);
    void setState(AppSearchState state);

    ASOStore &m_store;
    AppSearchState m_state;
    QString m_lastText;
    QString m_lastCountry;
    TaskScope m_tasks;
};

} // namespace veltrix
