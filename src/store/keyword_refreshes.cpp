// SPDX-License-Identifier: GPL-3.0-or-later
// One keyword, the background queue, rows, and the progress of them all.
#include "store/keyword_refreshes.h"

#include "model/keyword_rule.h"
#include "store/store_error.h"

namespace veltrix
{

namespace
{

/// What went wrong, in words for the user.
QString reasonOf(const std::exception &failure)
{
    if (const auto *error = dynamic_cast<const Error *>(&failure))
        return error->description();
    return QString::fromUtf8(failure.what());
}

} // namespace

/// Rows on their way: counted in the progress until this goes, however it goes.
class KeywordRefreshes::LaneOnRoad
{
public:
    LaneOnRoad(KeywordRefreshes &refreshes, std::shared_ptr<Lane> lane)
        : m_refreshes(refreshes), m_lane(std::move(lane))
    {
        m_refreshes.m_rows.push_back(m_lane);
    }
    LaneOnRoad(const LaneOnRoad &) = delete;
    LaneOnRoad &operator=(const LaneOnRoad &) = delete;
    ~LaneOnRoad()
    {
        std::erase(m_refreshes.m_rows, m_lane);
        m_refreshes.announceProgress();
    }

private:
    KeywordRefreshes &m_refreshes;
    std::shared_ptr<Lane> m_lane;
};

KeywordRefreshes::KeywordRefreshes(RefreshedKeywords &keywords, KeywordPipeline pipeline,
                                   std::shared_ptr<Clock> clock)
    : m_keywords(keywords), m_pipeline(std::move(pipeline)), m_clock(std::move(clock))
{
}

KeywordRefreshes::~KeywordRefreshes()
{
    // What still runs ends with this object, and nobody is to look at it then.
    blockSignals(true);
}

Seconds KeywordRefreshes::age(const KeywordSnapshot &snapshot) const
{
    return m_clock->now() - snapshot.fetchedAt;
}

bool KeywordRefreshes::hasCurrentModels(const KeywordSnapshot &snapshot) const
{
    return snapshot.popularityModelVersion == m_pipeline.popularityProvider->modelVersion() &&
           snapshot.scoringModelVersion == currentScoringModelVersion;
}

bool KeywordRefreshes::isReusable(const KeywordSnapshot &snapshot, Reuse reuse) const
{
    if (reuse == Reuse::None || !hasCurrentModels(snapshot))
        return false;
    if (reuse == Reuse::Today)
        return utcDay(snapshot.fetchedAt) >= utcDay(m_clock->now());
    // Popularity that was out of reach may be there now: the snapshot itself says "try again".
    const bool lacksPopularity =
        !snapshot.popularityMeasurement && snapshot.popularityStatus == popularityUnavailable;
    return !lacksPopularity && age(snapshot) < keywordRefreshTTL;
}

bool KeywordRefreshes::canBeMeasured(const QUuid &keywordId) const
{
    const std::optional<TrackedKeyword> keyword = m_keywords.trackedKeyword(keywordId);
    return keyword && m_keywords.app(keyword->appId) &&
           !keywordRefusal(keyword->keyword, keyword->country);
}

// One keyword

Task<SharedSnapshot> KeywordRefreshes::refresh(QUuid id, std::stop_token callersStop)
{
    const ScopedStop stop(m_callersTasks, callersStop);
    SharedSnapshot snapshot = co_await refreshUnlessDeleted(id, Reuse::SixHours, stop);
    if (!snapshot)
        throw Cancelled();
    co_return snapshot;
}

/// Null when the keyword was deleted while it was measured: so those who go through many keywords
/// can tell it from a stop.
Task<SharedSnapshot> KeywordRefreshes::refreshUnlessDeleted(QUuid id, Reuse reuse,
                                                            std::stop_token stop)
{
    const std::optional<TrackedKeyword> keyword = m_keywords.trackedKeyword(id);
    if (!keyword)
        throw StoreError(404, QStringLiteral("Tracked keyword not found"));
    const std::optional<AppProfile> app = m_keywords.app(keyword->appId);
    if (!app)
        throw StoreError(404, QStringLiteral("App not found"));
    SharedSnapshot newest = m_keywords.newestSnapshot(id);
    if (newest && isReusable(*newest, reuse))
        co_return newest;
    decltype(m_measurements)::Start start = [this, keyword = *keyword,
                                             app = *app](std::stop_token measuring) {
        return measure(keyword, app, std::move(measuring));
    };
    co_return co_await m_measurements.join(id, std::move(start), stop);
}

Task<SharedSnapshot> KeywordRefreshes::measure(TrackedKeyword keyword, AppProfile app,
                                               std::stop_token stop)
{
    KeywordMeasurement measurement;
    std::exception_ptr failure;
    try {
        measurement = co_await m_pipeline.run(keyword, app, stop);
    } catch (const Cancelled &) {
        throw;
    } catch (const std::exception &) {
        failure = std::current_exception();
    }
    throwIfStopped(stop);
    // Deleted while it was measured: the result, a failure too, belongs to nothing.
    if (!m_keywords.trackedKeyword(keyword.id)) {
        m_failed.remove(keyword.id);
        co_return SharedSnapshot();
    }
    if (failure) {
        m_failed[keyword.id] = ++m_failures;
        std::rethrow_exception(failure);
    }
    m_failed.remove(keyword.id);
    auto snapshot = std::make_shared<const KeywordSnapshot>(std::move(measurement.snapshot));
    m_keywords.keepSnapshot(snapshot, measurement.results);
    co_return snapshot;
}

/// One keyword's turn in one of the three ways.
Task<KeywordRefreshes::Attempt> KeywordRefreshes::attempt(TrackedKeyword keyword, Reuse reuse,
                                                          std::stop_token stop)
{
    Attempt result;
    try {
        result.isMeasured = co_await refreshUnlessDeleted(keyword.id, reuse, stop) != nullptr;
    } catch (const Cancelled &) {
        throw;
    } catch (const std::exception &error) {
        // An observer may have deleted it just before its turn.
        if (m_keywords.trackedKeyword(keyword.id))
            result.problem = reasonOf(error);
    }
    throwIfStopped(stop);
    if (result.isMeasured)
        m_done.insert(keyword.id);
    co_return result;
}

// The background queue

void KeywordRefreshes::queue(const QList<TrackedKeyword> &keywords)
{
    QSet<QUuid> known;
    for (const TrackedKeyword &waiting : m_queue.waiting)
        known.insert(waiting.id);
    if (m_queue.current)
        known.insert(m_queue.current->id);
    for (const TrackedKeyword &keyword : keywords) {
        if (known.contains(keyword.id))
            continue;
        known.insert(keyword.id);
        m_queue.waiting.push_back(keyword);
    }
    announceProgress();
    if (m_isQueueRunning || m_queue.waiting.empty())
        return;
    m_isQueueRunning = true;
    m_queueTask.own(runQueue(m_queueTask.token()));
}

Task<void> KeywordRefreshes::runQueue(std::stop_token stop)
{
    // Once stopped, the queue is somebody else's, so nothing of it is touched.
    while (!stop.stop_requested() && !m_queue.waiting.empty()) {
        const TrackedKeyword keyword = m_queue.waiting.front();
        m_queue.waiting.pop_front();
        if (!canBeMeasured(keyword.id)) {
            announceProgress();
            continue;
        }
        m_queue.current = keyword;
        announceProgress();
        throwIfStopped(stop);

        const Attempt turn = co_await attempt(keyword, Reuse::SixHours, stop);
        if (turn.problem) {
            endQueue();
            const QString saved = QStringLiteral("Keywords are saved. ");
            const QString failed =
                QStringLiteral("Metrics couldn't be loaded; use Refresh to retry.");
            setError(m_keywords.hasUnsavedChange() ? failed : saved + failed,
                     RefreshFailure{keyword, *turn.problem});
            co_return;
        }
        m_queue.current.reset();
        if (!m_queue.waiting.empty())
            announceProgress();
    }
    throwIfStopped(stop);
    endQueue();
}

void KeywordRefreshes::endQueue()
{
    m_queue.waiting.clear();
    m_queue.current.reset();
    m_isQueueRunning = false;
    announceProgress();
}

void KeywordRefreshes::stopQueue()
{
    if (!m_isQueueRunning)
        return;
    m_queueTask.stop();
    endQueue();
}

// Rows

Task<void> KeywordRefreshes::refreshRows(Rows rows, RowEnded ended, std::stop_token callersStop)
{
    const ScopedStop stop(m_callersTasks, callersStop);
    throwIfStopped(stop);
    const auto lane = std::make_shared<Lane>();
    for (const QUuid &id : std::as_const(rows.ids)) {
        if (const auto keyword = m_keywords.trackedKeyword(id))
            lane->waiting.push_back(*keyword);
    }
    const LaneOnRoad onRoad(*this, lane);
    int failures = 0;
    while (!lane->waiting.empty()) {
        throwIfStopped(stop);
        const TrackedKeyword keyword = lane->waiting.front();
        lane->waiting.pop_front();
        // Deleted while it waited its turn: there is nothing to tell.
        if (!m_keywords.trackedKeyword(keyword.id))
            continue;
        lane->current = keyword;
        announceProgress();
        const Attempt turn = co_await attempt(keyword, rows.reuse, stop);
        lane->current.reset();
        if (turn.isMeasured || turn.problem)
            ended(keyword, turn.problem);
        if (turn.isMeasured)
            failures = 0;
        if (turn.problem && canBeMeasured(keyword.id) && ++failures >= rows.mostFailures)
            co_return;
    }
}

// All of them

void KeywordRefreshes::stop()
{
    m_callersTasks.stop();
    m_historyTask.stop();
    stopQueue();
}

RefreshProgress KeywordRefreshes::countProgress() const
{
    // What the user asked for comes first.
    std::vector<const Lane *> lanes;
    for (const std::shared_ptr<Lane> &lane : m_rows)
        lanes.push_back(lane.get());
    if (m_isQueueRunning || !m_queue.waiting.empty())
        lanes.push_back(&m_queue);
    if (m_history)
        lanes.push_back(m_history.get());
    if (lanes.size() == 1) {
        const Lane &only = *lanes.front();
        return {int(m_done.size()), int(only.waiting.size()), only.current};
    }

    RefreshProgress progress;
    progress.done = int(m_done.size());
    QSet<QUuid> distinct;
    for (const Lane *lane : lanes) {
        if (!progress.current)
            progress.current = lane->current;
        if (lane->current)
            distinct.insert(lane->current->id);
        for (const TrackedKeyword &keyword : lane->waiting)
            distinct.insert(keyword.id);
    }
    progress.waiting = int(distinct.size()) - (progress.current ? 1 : 0);
    return progress;
}

void KeywordRefreshes::announceProgress()
{
    RefreshProgress progress = countProgress();
    if (progress.isIdle()) {
        m_done.clear();
        progress.done = 0;
    }
    if (progress == m_progress)
        return;
    m_progress = progress;
    Q_EMIT progressChanged();
}

void KeywordRefreshes::setError(std::optional<QString> error, std::optional<RefreshFailure> failure)
{
    if (m_error == error && m_failure == failure)
        return;
    m_error = std::move(error);
    m_failure = std::move(failure);
    Q_EMIT errorChanged();
}

} // namespace veltrix
