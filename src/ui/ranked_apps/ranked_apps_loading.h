// SPDX-License-Identifier: GPL-3.0-or-later
// How the ranked apps of a keyword come: saved ones at once, fresh ones behind them.
#pragma once

#include "store/aso_store.h"
#include "ui_kit/loading/loader.h"
#include "ui_kit/text/figures.h"

#include <QLocale>
#include <QTimeZone>
#include <QTimer>

#include <chrono>

namespace veltrix
{

/// Results of a keyword's search.
struct RankedApps {
    QList<ITunesAppResult> results;
    /// When they were saved; nothing when they are fresh.
    std::optional<Date> savedDate;
    bool operator==(const RankedApps &) const = default;
};

/// What the ranked-apps sheet shows.
struct RankedAppsState {
    /// Results shown at first, and added by each "View more".
    static constexpr qsizetype page = 25;

    Loadable<RankedApps> apps;
    qsizetype visibleCount = page;
    /// Counts the loadings that were asked for again.
    int attempt = 0;

    [[nodiscard]] QList<ITunesAppResult> results() const;
    /// The visible ones of them.
    [[nodiscard]] qsizetype shown() const { return std::min(visibleCount, results().size()); }
    /// What "View more" adds: the hidden results, at most a page.
    [[nodiscard]] qsizetype more() const { return std::min(results().size() - shown(), page); }

    /// "Results from Nov 21, 2026, 9:41 AM · Refreshing…"; empty for fresh results.
    [[nodiscard]] QString savedText(const QLocale &locale = wordLocale(),
                                    const QTimeZone &zone = QTimeZone::systemTimeZone()) const;
    /// "Showing saved results. " and what went wrong; empty unless a refresh failed over results.
    [[nodiscard]] QString failureText() const;
    /// "Showing 25 of 100 results"
    [[nodiscard]] QString countText() const;
    /// "View more (25)"
    [[nodiscard]] QString moreText() const;
};

/// Loads the ranked apps of a keyword and says how many of them are visible.
class RankedAppsLoading final : public QObject
{
    Q_OBJECT

public:
    struct Source {
        /// The saved results, if any, from wherever they are kept.
        std::function<Task<std::optional<SavedResults>>(std::stop_token)> saved;
        /// The current results; may fail with an Error.
        Loader<QList<ITunesAppResult>>::Ask load;
        /// Saved results that come within this are the first that is shown; then it is said that
        /// they are waited for.
        std::chrono::milliseconds moment{150};
    };

    explicit RankedAppsLoading(Source source, QObject *parent = nullptr);

    /// Shows the saved results and loads; again after a failure.
    void start();
    void retry();
    void showMore();

    [[nodiscard]] RankedAppsState state() const;

Q_SIGNALS:
    void changed();

private:
    Task<void> begin(std::stop_token stop);
    static Task<RankedApps> fresh(Loader<QList<ITunesAppResult>>::Ask load, std::stop_token stop);

    Source m_source;
    qsizetype m_visibleCount = RankedAppsState::page;
    int m_attempt = 0;
    QTimer m_moment;
    Loader<RankedApps> m_apps;
    TaskScope m_tasks;
};

} // namespace veltrix
