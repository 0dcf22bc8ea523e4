// SPDX-License-Identifier: GPL-3.0-or-later
// Measuring keywords: single ones, the background queue, all whose ranking is stale.
#pragma once

#include "effects/clock.h"
#include "effects/shared_task.h"
#include "model/app_profile.h"
#include "model/keyword_snapshot.h"
#include "model/tracked_keyword.h"
#include "scoring/keyword_pipeline.h"
#include "store/refresh_progress.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace veltrix
{

/// What measuring needs of whoever keeps the keywords.
class RefreshedKeywords
{
public:
    virtual ~RefreshedKeywords() = default;
    /// In the order in which they are refreshed.
    [[nodiscard]] virtual const QList<TrackedKeyword> &trackedKeywords() const = 0;
    [[nodiscard]] virtual std::optional<TrackedKeyword> trackedKeyword(QUuid id) const = 0;
    [[nodiscard]] virtual std::optional<AppProfile> app(QUuid id) const = 0;
    /// As of now; null when there is none.
    [[nodiscard]] virtual SharedSnapshot newestSnapshot(QUuid keywordId) const = 0;
    /// What is tracked is in memory alone; false where nothing is ever saved.
    [[nodiscard]] virtual bool hasUnsavedChange() const { return false; }
    /// Keeps a new measurement, with what the results say of others, and tells everyone.
    virtual void keepSnapshot(SharedSnapshot snapshot, const QList<ITunesAppResult> &results) = 0;
};

/// Decides what is measured when, and measures it. Three ways lead here: the background queue, the
/// refresh of all rankings, and rows that the user chose. They run side by side, but a keyword is
/// measured once: who asks for one that is being measured joins. Each way goes through its keywords
/// one after another and ends at its first failure.
///
/// What runs belongs to this object. Callers wait under tokens of their own; for them Cancelled
/// means that they were stopped, that stop() was called, or that this object is gone.
class KeywordRefreshes final : public QObject
{
    Q_OBJECT

public:
    /// How old a keyword's newest snapshot may be before it is measured again.
    static constexpr Seconds keywordRefreshTTL{21'600};
    /// How old it may be in a refresh of all rankings.
    static constexpr Seconds historyStaleness{86'400};

    /// When a ranking is due by itself.
    enum class Due {
        /// When its newest measurement is historyStaleness old.
        After24Hours,
        /// When it has no measurement on the current UTC day. A refresh that starts a little
        /// earlier every day skips no day by it.
        EachDay,
    };
    /// Which measurement of a keyword makes a new one needless, if it was made by the current
    /// models.
    enum class Reuse {
        /// One younger than keywordRefreshTTL.
        SixHours,
        /// One of the current UTC day.
        Today,
        None,
    };

    /// `keywords` outlives this.
    KeywordRefreshes(RefreshedKeywords &keywords, KeywordPipeline pipeline,
                     std::shared_ptr<Clock> clock);
    ~KeywordRefreshes() override;

    /// Brings one keyword up to date: its newest snapshot when that is young enough, or a new one.
    /// Throws StoreError 404 "Tracked keyword not found" or "App not found", the pipeline's errors,
    /// and Cancelled also when the keyword is deleted meanwhile.
    Task<SharedSnapshot> refresh(QUuid id, std::stop_token stop);

    /// Queues keywords for measuring in the background. Those that cannot be measured are skipped.
    void queue(const QList<TrackedKeyword> &keywords);
    /// Drops the queue and leaves the measurement in progress.
    void stopQueue();

    /// Told when a row has had its turn, with the reason when it could not be measured.
    using RowEnded =
        std::function<void(const TrackedKeyword &keyword, const std::optional<QString> &problem)>;
    struct Rows {
        QList<QUuid> ids;
        Reuse reuse = Reuse::SixHours;
        /// So many failures in a row end the refresh: it is the service that fails then. Those of
        /// keywords that never can be measured do not count.
        int mostFailures = 1;
    };
    /// Brings keywords up to date one after another. A keyword that is deleted meanwhile is left
    /// out.
    Task<void> refreshRows(Rows rows, RowEnded ended, std::stop_token stop);

    /// Measures every keyword whose ranking is stale, in the order of the keywords, those that
    /// failed last time at the end, or joins the refresh that is running. Keywords of `first` come
    /// before those of other apps, in a running refresh too. Failures show in error().
    Task<HistoryRefresh> refreshStale(std::optional<QUuid> first, std::stop_token stop);
    [[nodiscard]] bool isRefreshingHistory() const { return m_history != nullptr; }
    /// Whether a keyword that can be measured is due by the rule.
    [[nodiscard]] bool isDue(const QUuid &keywordId, Due rule) const;
    /// The rule of the refresh of all rankings; After24Hours at first.
    void setDue(Due rule) { m_due = rule; }

    /// Ends everything that is being measured, whoever waits for it.
    void stop();

    [[nodiscard]] const RefreshProgress &progress() const { return m_progress; }
    /// What the user reads of the last failure; gone when the next refresh of all rankings starts.
    [[nodiscard]] const std::optional<QString> &error() const { return m_error; }
    /// What error() is about.
    [[nodiscard]] const std::optional<RefreshFailure> &failure() const { return m_failure; }

Q_SIGNALS:
    void progressChanged();
    void errorChanged();
    void isRefreshingHistoryChanged();

private:
    /// Keywords on their way through one of the three ways.
    struct Lane {
        std::deque<TrackedKeyword> waiting;
        std::optional<TrackedKeyword> current;
    };
    class LaneOnRoad;
    /// How a keyword's turn ended. Neither measured nor a problem: it was deleted meanwhile.
    struct Attempt {
        bool isMeasured = false;
        std::optional<QString> problem;
    };

    [[nodiscard]] Seconds age(const KeywordSnapshot &snapshot) const;
    [[nodiscard]] bool hasCurrentModels(const KeywordSnapshot &snapshot) const;
    [[nodiscard]] bool isReusable(const KeywordSnapshot &snapshot, Reuse reuse) const;
    [[nodiscard]] bool isStale(const QUuid &keywordId, Due rule) const;
    /// What the refresh of all rankings takes for measured.
    [[nodiscard]] Reuse reuseWhenDue() const;
    [[nodiscard]] bool canBeMeasured(const QUuid &keywordId) const;

    Task<SharedSnapshot> measure(TrackedKeyword keyword, AppProfile app, std::stop_token stop);
    Task<SharedSnapshot> refreshUnlessDeleted(QUuid id, Reuse reuse, std::stop_token stop);
    Task<Attempt> attempt(TrackedKeyword keyword, Reuse reuse, std::stop_token stop);

    Task<void> runQueue(std::stop_token stop);
    void endQueue();

    Task<HistoryRefresh> runHistory(std::optional<QUuid> first, std::stop_token stop);
    Task<HistoryRefresh> refreshLane(std::shared_ptr<Lane> lane, std::stop_token stop);
    [[nodiscard]] std::deque<TrackedKeyword> staleKeywords() const;
    void lookAgain(Lane &lane, const QSet<QUuid> &tried) const;
    [[nodiscard]] std::optional<Date> nextStale() const;
    void putFirst(std::deque<TrackedKeyword> &keywords, const QUuid &appId) const;

    [[nodiscard]] RefreshProgress countProgress() const;
    void announceProgress();
    void setError(std::optional<QString> error, std::optional<RefreshFailure> failure);

    RefreshedKeywords &m_keywords;
    KeywordPipeline m_pipeline;
    std::shared_ptr<Clock> m_clock;

    Due m_due = Due::After24Hours;
    /// Keywords whose last attempt failed; the number grows with every failure.
    QHash<QUuid, quint64> m_failed;
    quint64 m_failures = 0;
    std::optional<QString> m_error;
    std::optional<RefreshFailure> m_failure;

    Lane m_queue;
    bool m_isQueueRunning = false;
    std::vector<std::shared_ptr<Lane>> m_rows;
    std::shared_ptr<Lane> m_history;
    QSet<QUuid> m_done;
    RefreshProgress m_progress;

    // What runs, last, so that it ends while everything else still lives: first those that wait for
    // measurements, then the measurements.
    SharedTasks<QUuid, SharedSnapshot> m_measurements;
    SharedTask<HistoryRefresh> m_historyTask;
    TaskScope m_queueTask;
    TaskScope m_callersTasks;
};

} // namespace veltrix
