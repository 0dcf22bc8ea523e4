// SPDX-License-Identifier: GPL-3.0-or-later
// How the ranked apps of a keyword come: saved ones at once, fresh ones behind them.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui_kit/text/figures.h"

#include <QLocale>
#include <QObject>
#include <QTimeZone>

#include <functional>

namespace veltrix
{

/// What the ranked-apps sheet shows.
struct RankedAppsState {
    /// Results shown at first, and added by each "View more".
    static constexpr qsizetype page = 25;

    QList<ITunesAppResult> results;
    qsizetype visibleCount = page;
    bool isLoading = false;
    std::optional<QString> errorMessage;
    /// Counts the loadings that were asked for.
    int attempt = 0;
    /// When the results on screen were saved; nothing when they are fresh.
    std::optional<Date> savedDate;

    enum class Screen { Loading, Failed, Empty, List };
    [[nodiscard]] Screen screen() const;
    [[nodiscard]] bool hasResults() const { return !results.isEmpty(); }
    [[nodiscard]] qsizetype shown() const { return std::min(visibleCount, results.size()); }
    /// What "View more" adds: the hidden results, at most a page.
    [[nodiscard]] qsizetype more() const { return std::min(results.size() - shown(), page); }

    /// "Results from Nov 21, 2026, 9:41 AM · Refreshing…"; empty for fresh results.
    [[nodiscard]] QString savedText(const QLocale &locale = wordLocale(),
                                    const QTimeZone &zone = QTimeZone::systemTimeZone()) const;
    /// "Showing saved results. " and what went wrong; empty unless a refresh failed over results.
    [[nodiscard]] QString failureText() const;
    /// "Showing 25 of 100 results"
    [[nodiscard]] QString countText() const;
    /// "View more (25)"
    [[nodiscard]] QString moreText() const;

    bool operator==(const RankedAppsState &) const = default;
};

class RankedAppsLoading final : public QObject
{
    Q_OBJECT

public:
    struct Source {
        /// The saved results, if any.
        std::function<std::optional<SavedResults>()> saved;
        /// The current results; may fail with an Error.
        std::function<Task<QList<ITunesAppResult>>(std::stop_token)> load;
    };

    explicit RankedAppsLoading(Source source, QObject *parent = nullptr);
    ~RankedAppsLoading() override;

    /// Shows the saved results and loads; again after a failure.
    void start();
    void retry();
    void showMore();

    [[nodiscard]] const RankedAppsState &state() const { return m_state; }

Q_SIGNALS:
    void changed();

private:
    Task<void> load(std::stop_token stop);

    Source m_source;
    RankedAppsState m_state;
    TaskScope m_tasks;
};

} // namespace veltrix
