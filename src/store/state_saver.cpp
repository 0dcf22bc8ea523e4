// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/state_saver.h"

#include <algorithm>

namespace veltrix
{

namespace
{

template <class T>
void append(std::vector<T> &list, std::vector<T> more)
{
    std::ranges::move(more, std::back_inserter(list));
}

} // namespace

StateSaver::StateSaver(QString path, DataFolderLock *lock, qint64 limit, QObject *parent)
    : QObject(parent), m_keeper(path, lock, limit)
{
}

StateSaver::~StateSaver()
{
    {
        const std::scoped_lock locked(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

PersistedState StateSaver::load(EarlyStateRead *early)
{
    waitUntilFinished();
    PersistedState state = m_keeper.file().load(early);
    m_told = look(m_told.tried);
    return state;
}

void StateSaver::beginAnew(Date now)
{
    const std::uint64_t number = ++m_handedOver;
    request([&](Requests &requests) {
        requests.anew = now;
        requests.number = number;
    });
}

void StateSaver::tryFolderAgain()
{
    if (!isIdle())
        return;
    takeNews();
    m_keeper.file().tryFolderAgain();
    m_told = look(m_told.tried);
}

void StateSaver::dismissNotices()
{
    if (!isIdle()) {
        const std::uint64_t number = ++m_handedOver;
        request([&](Requests &requests) {
            requests.dismisses = true;
            requests.number = number;
        });
        return;
    }
    takeNews();
    m_keeper.dismissNotices();
    m_told = look(m_told.tried);
}

void StateSaver::tidy(StateChange loaded)
{
    request([&](Requests &requests) { requests.loaded = std::move(loaded); });
}

void StateSaver::save(StateChange change)
{
    const std::uint64_t number = ++m_handedOver;
    request([&](Requests &requests) {
        if (requests.change) {
            StateChange::Removals sum = std::move(requests.change->removals);
            append(sum.removed, std::move(change.removals.removed));
            append(sum.restored, std::move(change.removals.restored));
            append(sum.joined, std::move(change.removals.joined));
            change.removals = std::move(sum);
            append(requests.change->edits, std::move(change.edits));
            change.edits = std::move(requests.change->edits);
        }
        requests.change = std::move(change);
        requests.number = number;
    });
}

void StateSaver::free(std::vector<SharedSnapshot> snapshots)
{
    request([&](Requests &requests) { append(requests.dropped, std::move(snapshots)); });
}

Task<void> StateSaver::finished(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (m_told.tried == m_handedOver)
        co_return;
    const Waiting waiting{m_handedOver, {}};
    m_waiting.push_back(waiting);
    co_await waiting.ended.wait(stop);
}

void StateSaver::waitUntilFinished()
{
    {
        std::unique_lock locked(m_mutex);
        m_changed.wait(locked, [this] { return m_tried == m_handedOver; });
    }
    takeNews();
}

template <class T>
Task<T> StateSaver::ask(std::function<T(const StateKeeper &)> question, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const OneShot<T> result;
    const std::stop_token token = stop;
    {
        const std::scoped_lock locked(m_mutex);
        m_questions.push_back([=](const StateKeeper &keeper) -> News {
            if (token.stop_requested())
                return [] {
                };
            try {
                return [result, found = question(keeper)]() mutable {
                    result.resolve(std::move(found));
                };
            } catch (...) {
                return [result, error = std::current_exception()] {
                    result.fail(error);
                };
            }
        });
    }
    wake();
    co_return co_await result.wait(stop);
}

Task<std::vector<RankingTimeline::Observation>> StateSaver::observations(QUuid keywordId,
                                                                         std::stop_token stop)
{
    using Found = std::vector<RankingTimeline::Observation>;
    return ask<Found>(
        [keywordId](const StateKeeper &keeper) { return keeper.observations(keywordId); },
        std::move(stop));
}

Task<std::vector<SharedSnapshot>> StateSaver::records(QUuid keywordId, std::int64_t firstDay,
                                                      size_t most, std::stop_token stop)
{
    using Found = std::vector<SharedSnapshot>;
    return ask<Found>(
        [=](const StateKeeper &keeper) { return keeper.records(keywordId, firstDay, most); },
        std::move(stop));
}

Task<PastRanks> StateSaver::pastRanks(PastRanks::Question question, std::stop_token stop)
{
    return ask<PastRanks>([question = std::move(question)](
                              const StateKeeper &keeper) { return keeper.pastRanks(question); },
                          std::move(stop));
}

Task<std::vector<KeywordStandings>> StateSaver::standings(QUuid keywordId, std::stop_token stop)
{
    using Found = std::vector<KeywordStandings>;
    return ask<Found>(
        [keywordId](const StateKeeper &keeper) { return keeper.standings(keywordId); },
        std::move(stop));
}

Task<std::vector<KeywordStandings>> StateSaver::newestStandings(std::vector<QUuid> keywordIds,
                                                                Date latest, std::stop_token stop)
{
    using Found = std::vector<KeywordStandings>;
    return ask<Found>(
        [ids = std::move(keywordIds), latest](const StateKeeper &keeper) {
            return keeper.newestStandings(ids, latest);
        },
        std::move(stop));
}

Task<ListingHistory> StateSaver::listingHistory(QUuid appId, std::stop_token stop)
{
    return ask<ListingHistory>(
        [appId](const StateKeeper &keeper) { return keeper.listingHistory(appId); },
        std::move(stop));
}

Task<WrittenNotes> StateSaver::writtenNotes(std::stop_token stop)
{
    return ask<WrittenNotes>([](const StateKeeper &keeper) { return keeper.writtenNotes(); },
                             std::move(stop));
}

StateSaver::Told StateSaver::look(std::uint64_t tried) const
{
    const StateFile &file = m_keeper.file();
    return {m_keeper.problem(),
            file.isRead(),
            file.hasUnsavedChange() || m_keeper.hasUnsavedEdit(),
            m_keeper.hasHistory(),
            m_keeper.needsTidying(),
            m_keeper.progress(),
            tried};
}

bool StateSaver::isIdle()
{
    const std::scoped_lock locked(m_mutex);
    return !m_isBusy && m_requests.isEmpty && m_questions.empty();
}

template <class Add>
void StateSaver::request(Add &&add)
{
    {
        const std::scoped_lock locked(m_mutex);
        add(m_requests);
        m_requests.isEmpty = false;
    }
    wake();
}

void StateSaver::wake()
{
    m_changed.notify_all();
    if (!m_thread.joinable())
        m_thread = std::thread([this] { run(); });
}

bool StateSaver::hasWork() const
{
    return !m_requests.isEmpty || !m_questions.empty() || m_keeper.hasWork();
}

void StateSaver::run()
{
    std::unique_lock locked(m_mutex);
    for (;;) {
        m_isBusy = hasWork();
        m_changed.wait(locked, [this] { return hasWork() || m_ends; });
        // What is done step by step goes on at the next start.
        if (m_ends && m_requests.isEmpty)
            return;
        m_isBusy = true;
        if (!m_questions.empty() && !m_ends) {
            const Question question = std::move(m_questions.front());
            m_questions.pop_front();
            locked.unlock();
            tell(question(m_keeper), m_tried);
        } else if (!m_requests.isEmpty) {
            Requests requests = std::exchange(m_requests, {});
            locked.unlock();
            fulfil(std::move(requests));
        } else {
            locked.unlock();
            m_keeper.work();
            tellState(m_tried);
        }
        locked.lock();
    }
}

void StateSaver::fulfil(Requests requests)
{
    if (requests.loaded)
        m_keeper.tidy(std::move(*requests.loaded));
    if (requests.anew)
        m_keeper.file().beginAnew(*requests.anew);
    if (requests.change)
        m_keeper.save(std::move(*requests.change));
    if (requests.dismisses)
        m_keeper.dismissNotices();
    const std::uint64_t number = requests.number;
    // The last that knows a snapshot frees it, here rather than on the main thread.
    requests = {};
    tellState(number);
}

void StateSaver::tellState(std::uint64_t number)
{
    // Written by this thread alone.
    const std::uint64_t tried = std::max(number, m_tried);
    Told told = look(tried);
    News news = [this, told = std::move(told), gone = m_keeper.takeMoved(),
                 applied = m_keeper.takeApplied()]() mutable {
        follow(std::move(told), std::move(gone), applied);
    };
    tell(std::move(news), tried);
}

void StateSaver::tell(News news, std::uint64_t tried)
{
    bool isFirst = false;
    {
        const std::scoped_lock locked(m_mutex);
        isFirst = m_freshNews.empty();
        m_freshNews.push_back(std::move(news));
        m_tried = tried;
        m_isBusy = hasWork();
    }
    m_changed.notify_all();
    if (isFirst)
        QMetaObject::invokeMethod(this, &StateSaver::takeNews, Qt::QueuedConnection);
}

void StateSaver::takeNews()
{
    {
        const std::scoped_lock locked(m_mutex);
        std::ranges::move(m_freshNews, std::back_inserter(m_news));
        m_freshNews.clear();
    }
    // Whoever hears of one may ask for the next himself.
    while (!m_news.empty()) {
        const News next = std::move(m_news.front());
        m_news.pop_front();
        next();
    }
}

void StateSaver::follow(Told told, MovedDays gone, const AppliedEdits &applied)
{
    m_told = std::move(told);
    if (!gone.snapshots.empty()) {
        Q_EMIT moved(gone);
        free(std::move(gone.snapshots));
    }
    if (!applied.isEmpty())
        Q_EMIT this->applied(applied);
    const auto isOver = [this](const Waiting &waiting) {
        return waiting.number <= m_told.tried;
    };
    const auto over =
        std::stable_partition(m_waiting.begin(), m_waiting.end(), std::not_fn(isOver));
    const std::vector<Waiting> ended(over, m_waiting.end());
    m_waiting.erase(over, m_waiting.end());
    Q_EMIT saved();
    for (const Waiting &waiting : ended)
        waiting.ended.resolve({});
}

} // namespace veltrix
