// SPDX-License-Identifier: GPL-3.0-or-later
// What the saving thread does: the state file kept short, and the history beside it.
#pragma once

#include "store/history_database.h"
#include "store/history_move.h"
#include "store/past_ranks.h"
#include "store/state_file.h"

#include <QSet>

#include <deque>

namespace veltrix
{

/// What is handed over after a change.
struct StateChange {
    /// All there is now.
    PersistedState state;
    /// Dates what is kept aside.
    Date now;

    /// What became of keywords, apps and competitors of which the history has something. A removal
    /// can be undone until the program ends, so the next start is the first to delete anything
    /// there.
    struct Removals {
        std::vector<QUuid> removed;
        /// Removed before, and there again.
        std::vector<QUuid> restored;
        struct Joined {
            QUuid from;
            QUuid to;
        };
        /// Removed before, and what they had is another's now.
        std::vector<Joined> joined;
    };
    Removals removals = {};
    /// What is added to the history, in this order.
    std::vector<HistoryEdit> edits = {};
};

/// Owns the state file and the history beside it ("history.sqlite"). A state is saved whole, then
/// the history gets what it alone keeps, and that is all that a change waits for. When the file has
/// become longer than the limit, the oldest days are copied to the history in steps, and then the
/// file is saved without them: at any moment each measurement is in one of them, or in both, and
/// where both have a day of a keyword the state file counts.
///
/// A history that fails is said in problem(), and all stays in the state file; what has no place
/// there stays in memory and is tried with the next save.
class StateKeeper
{
public:
    /// `limit`: bytes. Down to three quarters of it are moved out at a time.
    StateKeeper(const QString &path, DataFolderLock *lock, qint64 limit);

    [[nodiscard]] StateFile &file() { return m_file; }
    [[nodiscard]] const StateFile &file() const { return m_file; }
    [[nodiscard]] bool hasHistory() const;
    /// Whether a start has something to do here: a file that is too long, or removals to finish.
    [[nodiscard]] bool needsTidying() const;

    /// The state that was loaded: what a run before this one has left is to be finished.
    void tidy(StateChange loaded);
    /// Saves a state, with the notes of what was removed before and of what is back behind it.
    void save(StateChange change);
    /// What the user has written that is in memory alone.
    [[nodiscard]] bool hasUnsavedEdit() const;
    /// What edits have changed since the last call.
    [[nodiscard]] AppliedEdits takeApplied() { return std::exchange(m_applied, {}); }
    /// There is something to do step by step.
    [[nodiscard]] bool hasWork() const;
    /// Does a part of it that takes a tenth of a second or two.
    void work();
    [[nodiscard]] std::optional<HistoryMove> progress() const;
    /// What has left the state file since the last call.
    [[nodiscard]] MovedDays takeMoved() { return std::exchange(m_moved, {}); }

    // What the history has, as HistoryDatabase gives it; nothing without a history.
    [[nodiscard]] std::vector<RankingTimeline::Observation>
    observations(const QUuid &keywordId) const;
    [[nodiscard]] std::vector<SharedSnapshot> records(const QUuid &keywordId, std::int64_t firstDay,
                                                      size_t most) const;
    [[nodiscard]] PastRanks pastRanks(const PastRanks::Question &question) const;
    [[nodiscard]] std::vector<KeywordStandings> standings(const QUuid &keywordId) const;
    [[nodiscard]] std::vector<KeywordStandings> newestStandings(std::span<const QUuid> keywordIds,
                                                                Date latest) const;
    [[nodiscard]] ListingHistory listingHistory(const QUuid &appId) const;
    [[nodiscard]] WrittenNotes writtenNotes() const;

    [[nodiscard]] std::optional<PersistenceProblem> problem() const;
    void dismissNotices();

private:
    struct Move {
        PersistedState state;
        Date now;
        std::vector<SharedSnapshot> picked;
        size_t copied = 0;
    };

    /// Whose rows are not to be removed: what the file has.
    struct Tracked {
        QList<AppProfile> apps;
        QList<TrackedKeyword> keywords;
        QList<TrackedCompetitor> competitors;

        explicit Tracked(const PersistedState &state = {});
        [[nodiscard]] bool holds(const QUuid &id) const;
    };

    void noteRemovals(const StateChange &change);
    void applyEdits();
    void boundEdits();
    void dropRemovalNotes(const StateChange &change);
    void beginMove(StateChange change);
    void copySlice();
    void finishMove();
    void sweepRemovals();
    void removeGivenUp();
    /// False when it fails; then problem() says why.
    template <class Work>
    bool guarded(Work &&work);
    template <class Answer, class Question>
    [[nodiscard]] Answer answer(Question &&question) const;

    StateFile m_file;
    QString m_historyPath;
    qint64 m_limit;
    std::optional<Move> m_move;
    /// Copied by a move that has not ended, whatever states came meanwhile.
    QSet<QUuid> m_copied;
    MovedDays m_moved;
    /// Saves that go by before the next attempt to move; more after each failure.
    int m_pause = 0;
    int m_patience = 0;
    /// As it is in the file.
    Tracked m_tracked;
    std::vector<HistoryEdit> m_edits;
    AppliedEdits m_applied;
    std::optional<QString> m_editProblem;
    bool m_mustSweep = false;
    /// Removed since the start, and not yet for good.
    QSet<QUuid> m_noted;
    /// Removed for good, and still in the history.
    std::deque<QUuid> m_givenUp;
    std::optional<QString> m_historyProblem;
};

} // namespace veltrix
