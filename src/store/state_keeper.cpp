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

/// Measurements whose standings wait in memory, at most; some megabytes.
constexpr size_t mostWaitingEdits = 10'000;

template <class Record>
bool holdsOne(const QList<Record> &records, const QUuid &id)
{
    return std::ranges::find(records, id, &Record::id) != records.cend();
}

} // namespace

StateKeeper::Tracked::Tracked(const PersistedState &state)
    : apps(state.apps), keywords(state.trackedKeywords), competitors(state.competitors)
{
}

bool StateKeeper::Tracked::holds(const QUuid &id) const
{
    return holdsOne(keywords, id) || holdsOne(competitors, id) || holdsOne(apps, id);
}

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
    m_tracked = Tracked(loaded.state);
    m_mustSweep = hasHistory();
    beginMove(std::move(loaded));
}

void StateKeeper::save(StateChange change)
{
    m_move.reset();
    std::ranges::move(change.edits, std::back_inserter(m_edits));
    if (hasHistory() || !m_edits.empty())
        guarded([&] { noteRemovals(change); });
    m_file.save(change.state, change.now);
    if (m_file.hasUnsavedChange()) {
        boundEdits();
        return;
    }
    m_tracked = Tracked(change.state);
    if (!change.removals.restored.empty() && hasHistory())
        guarded([&] { dropRemovalNotes(change); });
    applyEdits();
    beginMove(std::move(change));
}

void StateKeeper::applyEdits()
{
    if (m_edits.empty())
        return;
    try {
        m_file.requireInPlace();
        AppliedEdits applied = HistoryDatabase::openOrCreate(m_historyPath).apply(m_edits);
        m_applied.keywords.unite(applied.keywords);
        m_applied.listings.unite(applied.listings);
        m_edits.clear();
        m_editProblem.reset();
        // The history is sound again, unless days still wait to be moved.
        if (m_pause == 0)
            m_historyProblem.reset();
    } catch (const std::exception &error) {
        m_editProblem = descriptionOf(error);
        boundEdits();
    }
}

void StateKeeper::boundEdits()
{
    if (m_edits.size() <= mostWaitingEdits)
        return;
    size_t surplus = m_edits.size() - mostWaitingEdits;
    std::erase_if(m_edits, [&](const HistoryEdit &edit) {
        if (surplus == 0 || isOfTheUser(edit))
            return false;
        --surplus;
        return true;
    });
}

bool StateKeeper::hasUnsavedEdit() const
{
    return std::ranges::any_of(m_edits, isOfTheUser);
}

void StateKeeper::noteRemovals(const StateChange &change)
{
    const Tracked tracked(change.state);
    std::vector<QUuid> gone;
    for (const QUuid &id : change.removals.removed) {
        if (!tracked.holds(id))
            gone.push_back(id);
    }
    if (gone.empty() && change.removals.joined.empty())
        return;
    m_file.requireInPlace();
    // What is added by this very save goes as well.
    auto history = m_edits.empty() ? HistoryDatabase::open(m_historyPath)
                                   : HistoryDatabase::openOrCreate(m_historyPath);
    if (!history)
        return;
    for (const auto &[from, to] : change.removals.joined)
        history->join(from, to);
    history->noteRemoval(gone);
    m_noted.unite(QSet<QUuid>(gone.begin(), gone.end()));
}

void StateKeeper::dropRemovalNotes(const StateChange &change)
{
    const Tracked tracked(change.state);
    std::vector<QUuid> back;
    for (const QUuid &id : change.removals.restored) {
        if (tracked.holds(id))
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
        if (m_tracked.holds(id))
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
    if (m_file.hasUnsavedChange() || m_tracked.holds(id)) {
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

template <class Answer, class Question>
Answer StateKeeper::answer(Question &&question) const
{
    auto history = HistoryDatabase::open(m_historyPath);
    return history ? question(*history) : Answer();
}

std::vector<RankingTimeline::Observation> StateKeeper::observations(const QUuid &keywordId) const
{
    return answer<std::vector<RankingTimeline::Observation>>(
        [&](HistoryDatabase &history) { return history.observations(keywordId); });
}

std::vector<SharedSnapshot> StateKeeper::records(const QUuid &keywordId, std::int64_t firstDay,
                                                 size_t most) const
{
    return answer<std::vector<SharedSnapshot>>(
        [&](HistoryDatabase &history) { return history.records(keywordId, firstDay, most); });
}

PastRanks StateKeeper::pastRanks(const PastRanks::Question &question) const
{
    auto history = HistoryDatabase::open(m_historyPath);
    if (!history)
        return {std::vector(question.keywords.size(), RankDays(utcDay(question.now))), {}};
    return PastRanks::read(*history, question);
}

std::vector<KeywordStandings> StateKeeper::standings(const QUuid &keywordId) const
{
    return answer<std::vector<KeywordStandings>>(
        [&](HistoryDatabase &history) { return history.standings(keywordId); });
}

std::vector<KeywordStandings> StateKeeper::newestStandings(std::span<const QUuid> keywordIds,
                                                           Date latest) const
{
    return answer<std::vector<KeywordStandings>>(
        [&](HistoryDatabase &history) { return history.newestStandings(keywordIds, latest); });
}

ListingHistory StateKeeper::listingHistory(const QUuid &appId) const
{
    return answer<ListingHistory>(
        [&](HistoryDatabase &history) { return history.listingHistory(appId); });
}

WrittenNotes StateKeeper::writtenNotes() const
{
    return answer<WrittenNotes>([](HistoryDatabase &history) { return history.writtenNotes(); });
}

std::optional<PersistenceProblem> StateKeeper::problem() const
{
    auto problem = m_file.problem();
    const auto add = [&](const QString &line, PersistenceProblem::Remedy remedy) {
        if (!problem)
            problem = PersistenceProblem{line, remedy};
        else
            *problem = {problem->text + u'\n' + line, std::max(problem->remedy, remedy)};
    };
    using Remedy = PersistenceProblem::Remedy;
    if (m_historyProblem) {
        add(QStringLiteral("Older measurements could not be moved out of the state file, which "
                           "grows meanwhile. %1")
                .arg(*m_historyProblem),
            Remedy::Dismiss);
    }
    if (hasUnsavedEdit() && m_editProblem) {
        add(QStringLiteral("Notes and tags could not be saved yet. %1").arg(*m_editProblem),
            Remedy::TryAgain);
    } else if (m_editProblem) {
        add(QStringLiteral("Ranks of competitors could not be kept yet. %1").arg(*m_editProblem),
            Remedy::Dismiss);
    }
    return problem;
}

void StateKeeper::dismissNotices()
{
    m_file.dismissNotices();
    m_historyProblem.reset();
    if (!hasUnsavedEdit())
        m_editProblem.reset();
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
