// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/state_keeper.h"

#include <QFileInfo>

#include <algorithm>

namespace veltrix
{

namespace
{

/// Measurements that a step copies; some 0.15 seconds.
constexpr size_t sliceLength = 2'000;
/// Measurements that a step looks at, for those that an interrupted move has copied already.
constexpr size_t mostLooks = 20'000;
/// Saves between two attempts to move, at most.
constexpr int mostPatience = 64;

bool holds(const QList<TrackedKeyword> &keywords, const QUuid &id)
{
    return std::ranges::find(keywords, id, &TrackedKeyword::id) != keywords.cend();
}

} // namespace

StateKeeper::StateKeeper(const QString &path, DataFolderLock *lock, qint64 limit)
    : m_file(path, lock), m_historyPath(QFileInfo(path).path() + QStringLiteral("/history.sqlite")),
      m_limit(limit)
{
}

bool StateKeeper::hasHistory() const
{
    return !std::holds_alternative<NoFile>(lookAtFile(m_historyPath));
}

bool StateKeeper::needsTidying() const
{
    // What was not read has removed no keyword.
    return m_file.isRead() && m_file.size() > 0 && (m_file.size() > m_limit || hasHistory());
}

void StateKeeper::tidy(StateChange loaded)
{
    m_tracked = loaded.state.trackedKeywords;
    m_mustSweep = hasHistory();
    beginMove(std::move(loaded));
}

void StateKeeper::save(StateChange change)
{
    m_move.reset();
    if (hasHistory())
        guarded([&] { noteRemovals(change); });
    m_file.save(change.state, change.now);
    if (m_file.hasUnsavedChange())
        return;
    m_tracked = change.state.trackedKeywords;
    if (!change.removals.restored.empty() && hasHistory())
        guarded([&] { dropRemovalNotes(change); });
    beginMove(std::move(change));
}

void StateKeeper::noteRemovals(const StateChange &change)
{
    std::vector<QUuid> gone;
    for (const QUuid &id : change.removals.removed) {
        if (!holds(change.state.trackedKeywords, id))
            gone.push_back(id);
    }
    if (gone.empty() && change.removals.joined.empty())
        return;
    m_file.requireInPlace();
    auto history = HistoryDatabase::open(m_historyPath);
    if (!history)
        return;
    for (const auto &[from, to] : change.removals.joined)
        history->join(from, to);
    history->noteRemoval(gone);
    m_noted.unite(QSet<QUuid>(gone.begin(), gone.end()));
}

void StateKeeper::dropRemovalNotes(const StateChange &change)
{
    std::vector<QUuid> back;
    for (const QUuid &id : change.removals.restored) {
        if (holds(change.state.trackedKeywords, id))
            back.push_back(id);
    }
    if (auto history = HistoryDatabase::open(m_historyPath); history && !back.empty())
        history->dropRemovalNotes(back);
}

void StateKeeper::beginMove(StateChange change)
{
    if (m_file.size() <= m_limit) {
        m_copied.clear();
        return;
    }
    if (m_pause > 0) {
        --m_pause;
        return;
    }
    m_move = Move{std::move(change.state), change.now, {}, 0};
}

bool StateKeeper::hasWork() const
{
    return m_mustSweep || m_move || !m_givenUp.empty();
}

void StateKeeper::work()
{
    if (m_mustSweep) {
        m_mustSweep = false;
        guarded([this] { sweepRemovals(); });
    } else if (m_move) {
        if (!guarded([this] { copySlice(); })) {
            m_move.reset();
            m_patience = std::clamp(2 * m_patience, 1, mostPatience);
            m_pause = m_patience;
        }
    } else if (!m_givenUp.empty()) {
        // The next start finishes what fails here.
        if (!guarded([this] { removeGivenUp(); }))
            m_givenUp.clear();
    }
}

void StateKeeper::copySlice()
{
    Move &move = *m_move;
    if (move.picked.empty()) {
        const qint64 target = m_limit / 4 * 3;
        OldestDays oldest = oldestDays(move.state.snapshots, move.now, m_file.size() - target);
        // With very many keywords little may leave the file; that little would be moved at each
        // measurement.
        if (oldest.snapshots.empty() ||
            oldest.bytes < std::min(m_file.size() - target, m_limit / 16)) {
            m_move.reset();
            return;
        }
        move.picked = std::move(oldest.snapshots);
        const auto fresh =
            std::ranges::stable_partition(move.picked, [this](const SharedSnapshot &snapshot) {
                return m_copied.contains(snapshot->id);
            });
        move.copied = size_t(fresh.begin() - move.picked.begin());
    }
    m_file.requireInPlace();
    HistoryDatabase history = HistoryDatabase::openOrCreate(m_historyPath);
    std::vector<SharedSnapshot> slice;
    const size_t end = std::min(move.copied + mostLooks, move.picked.size());
    size_t next = move.copied;
    for (; next < end && slice.size() < sliceLength; ++next) {
        if (!history.contains(*move.picked[next]))
            slice.push_back(move.picked[next]);
    }
    history.insert(slice);
    for (; move.copied < next; ++move.copied)
        m_copied.insert(move.picked[move.copied]->id);
    if (move.copied == move.picked.size())
        finishMove();
}

void StateKeeper::finishMove()
{
    Move &move = *m_move;
    QSet<const KeywordSnapshot *> gone;
    gone.reserve(qsizetype(move.picked.size()));
    for (const SharedSnapshot &snapshot : move.picked)
        gone.insert(snapshot.get());
    std::erase_if(move.state.snapshots,
                  [&](const SharedSnapshot &snapshot) { return gone.contains(snapshot.get()); });
    m_file.replace(move.state, move.now);
    std::ranges::move(move.picked, std::back_inserter(m_moved.snapshots));
    m_moved.all.unite(gone);
    m_move.reset();
    m_copied.clear();
    m_patience = 0;
    m_historyProblem.reset();
}

void StateKeeper::sweepRemovals()
{
    m_file.requireInPlace();
    auto history = HistoryDatabase::open(m_historyPath);
    if (!history)
        return;
    std::vector<QUuid> back;
    for (const QUuid &id : history->removalNotes()) {
        if (holds(m_tracked, id))
            back.push_back(id);
        else if (!m_noted.contains(id))
            m_givenUp.push_back(id);
    }
    if (!back.empty())
        history->dropRemovalNotes(back);
}

void StateKeeper::removeGivenUp()
{
    const QUuid id = m_givenUp.front();
    // What could not be saved is still there in the file, and so is its keyword.
    if (m_file.hasUnsavedChange() || holds(m_tracked, id)) {
        m_givenUp.pop_front();
        return;
    }
    m_file.requireInPlace();
    if (auto history = HistoryDatabase::open(m_historyPath))
        history->remove(id);
    m_givenUp.pop_front();
}

std::optional<HistoryMove> StateKeeper::progress() const
{
    if (!m_move)
        return std::nullopt;
    return HistoryMove{qsizetype(m_move->copied), qsizetype(m_move->picked.size())};
}

std::vector<RankingTimeline::Observation> StateKeeper::observations(const QUuid &keywordId) const
{
    auto history = HistoryDatabase::open(m_historyPath);
    return history ? history->observations(keywordId) : std::vector<RankingTimeline::Observation>();
}

std::vector<SharedSnapshot> StateKeeper::records(const QUuid &keywordId, std::int64_t firstDay,
                                                 size_t most) const
{
    auto history = HistoryDatabase::open(m_historyPath);
    return history ? history->records(keywordId, firstDay, most) : std::vector<SharedSnapshot>();
}

PastRanks StateKeeper::pastRanks(const PastRanks::Question &question) const
{
    auto history = HistoryDatabase::open(m_historyPath);
    if (!history)
        return {std::vector(question.keywords.size(), RankDays(utcDay(question.now))), {}};
    return PastRanks::read(*history, question);
}

std::optional<PersistenceProblem> StateKeeper::problem() const
{
    auto problem = m_file.problem();
    if (!m_historyProblem)
        return problem;
    const QString line = QStringLiteral("Older measurements could not be moved out of the state "
                                        "file, which grows meanwhile. %1")
                             .arg(*m_historyProblem);
    if (!problem)
        return PersistenceProblem{line, PersistenceProblem::Remedy::Dismiss};
    problem->text += u'\n' + line;
    return problem;
}

void StateKeeper::dismissNotices()
{
    m_file.dismissNotices();
    m_historyProblem.reset();
}

template <class Work>
bool StateKeeper::guarded(Work &&work)
{
    try {
        work();
        return true;
    } catch (const std::exception &error) {
        m_historyProblem = descriptionOf(error);
        return false;
    }
}

} // namespace veltrix
