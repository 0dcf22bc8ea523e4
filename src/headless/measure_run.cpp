// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/measure_run.h"

#include "headless/keyword_choice.h"
#include "headless/rank_telling.h"
#include "store/aso_store.h"

#include <QSet>

namespace veltrix
{

namespace
{

/// Follows a signal until it goes.
struct Following {
    QMetaObject::Connection connection;

    explicit Following(QMetaObject::Connection made) : connection(std::move(made)) {}
    Following(const Following &) = delete;
    Following &operator=(const Following &) = delete;
    ~Following() { QObject::disconnect(connection); }
};

} // namespace

MeasureRun::MeasureRun(ASOStore &store, RankTelling &telling, Tell tell)
    : m_store(store), m_telling(telling), m_tell(std::move(tell))
{
}

Task<MeasureSummary> MeasureRun::run(MeasureWish wish, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    MeasureSummary summary;
    if (!m_store.isStateRead()) {
        if (const auto problem = m_store.persistenceProblem())
            summary.problem = problem->text;
    } else {
        QList<TrackedKeyword> chosen;
        try {
            chosen = chosenKeywords(m_store, {wish.apps, wish.storefronts});
        } catch (const UnknownChoice &wrong) {
            m_tell(MeasureMessage::ofWrongUse(wrong.description()));
            throw;
        }
        summary = co_await measure(chosen, wish.all, stop);
        co_await allSaved(stop);
        const auto problem = m_store.persistenceProblem();
        if (m_store.hasUnsavedChange() && problem)
            summary.problem = problem->text;
        if (wish.notify && summary.isComplete() && summary.measured > 0)
            summary.notice = co_await notice(std::move(chosen), stop);
    }
    m_tell(MeasureMessage(summary));
    co_return summary;
}

/// What is to be told of a run that has measured everything.
Task<std::optional<RankNotice>> MeasureRun::notice(QList<TrackedKeyword> measured,
                                                   std::stop_token stop)
{
    try {
        co_return co_await m_telling.tell(std::move(measured), stop);
    } catch (const Cancelled &) {
        throwIfStopped(m_tasks.token());
    }
    // The next run tells it.
    co_return std::nullopt;
}

/// What was measured until now is on disk, or could not be saved.
Task<void> MeasureRun::allSaved(std::stop_token stop)
{
    if (stop.stop_requested())
        m_store.waitUntilSaved();
    else
        co_await m_store.saved(stop);
}

/// The ids of those that are to be measured. What can never be is told at once.
QList<QUuid> MeasureRun::sortOut(const QList<TrackedKeyword> &chosen, bool all,
                                 MeasureSummary &summary) const
{
    QList<QUuid> ids;
    for (const TrackedKeyword &keyword : chosen) {
        if (const auto reason = m_store.unmeasurableReason(keyword)) {
            ++summary.notMeasured;
            m_tell(MeasureMessage(turnOf(keyword, reason)));
        } else if (all || m_store.refreshes().isDue(keyword.id, KeywordRefreshes::Due::EachDay)) {
            ids.append(keyword.id);
        } else {
            ++summary.measuredBefore;
        }
    }
    return ids;
}

MeasuredKeyword MeasureRun::turnOf(const TrackedKeyword &keyword,
                                   const std::optional<QString> &problem) const
{
    MeasuredKeyword turn;
    turn.keyword = keyword.keyword;
    turn.storefront = keyword.country;
    if (const auto app = m_store.app(keyword.appId)) {
        turn.app = app->appName;
        turn.appStoreId = app->trackId;
    }
    turn.problem = problem;
    turn.isMeasured = !problem;
    if (problem)
        return turn;
    turn.rank = m_store.dashboardRow(keyword).position;
    if (const auto movement = m_store.latestMovement(keyword.id))
        turn.movement = movement->label();
    return turn;
}

Task<MeasureSummary> MeasureRun::measure(QList<TrackedKeyword> chosen, bool all,
                                         std::stop_token stop)
{
    MeasureSummary summary;
    KeywordRefreshes &refreshes = m_store.refreshes();
    KeywordRefreshes::Rows rows{
        .ids = sortOut(chosen, all, summary),
        .reuse = all ? KeywordRefreshes::Reuse::None : KeywordRefreshes::Reuse::Today,
        .mostFailures = mostFailures,
    };
    QSet<QUuid> waiting(rows.ids.begin(), rows.ids.end());
    const auto total = rows.ids.size();

    // The store may measure for others at the same time.
    QUuid told;
    const auto tellProgress = [&] {
        const auto &current = refreshes.progress().current;
        if (!current || current->id == told || !waiting.contains(current->id))
            return;
        told = current->id;
        m_tell(
            MeasureMessage(MeasureProgress{current->keyword, total - waiting.size() + 1, total}));
    };
    const Following following(
        QObject::connect(&refreshes, &KeywordRefreshes::progressChanged, tellProgress));

    KeywordRefreshes::RowEnded ended = [&](const TrackedKeyword &keyword,
                                           const std::optional<QString> &problem) {
        waiting.remove(keyword.id);
        ++(problem ? summary.notMeasured : summary.measured);
        m_tell(MeasureMessage(turnOf(keyword, problem)));
    };
    try {
        co_await refreshes.refreshRows(std::move(rows), std::move(ended), stop);
    } catch (const Cancelled &) {
        throwIfStopped(m_tasks.token());
        // Whoever stopped it is told what is left.
    }
    for (const QUuid &id : std::as_const(waiting))
        summary.left += m_store.trackedKeyword(id) ? 1 : 0;
    co_return summary;
}

} // namespace veltrix
