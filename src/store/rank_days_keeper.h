// SPDX-License-Identifier: GPL-3.0-or-later
// The ranks of all keywords, kept right while the state and the day change.
#pragma once

#include "effects/clock.h"
#include "effects/one_shot.h"
#include "effects/task_scope.h"
#include "store/keyword_list.h"
#include "store/rank_days.h"
#include "store/snapshot_index.h"
#include "store/state_saver.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>

#include <memory>
#include <optional>
#include <vector>

namespace veltrix
{

/// Knows the RankDays of each keyword: at once what the state file has, and a little later, read on
/// the saving thread, what the history has beside it. Where both have a UTC day, the state file
/// counts. What lies ahead of the clock does not count until its time has come.
///
/// Belongs to the store, which tells it every change of its snapshots before it announces the
/// change itself. What the history has of keywords that were removed stays known, for the undo.
class RankDaysKeeper final : public QObject
{
    Q_OBJECT

public:
    /// How long after the state the history is read: the window comes first.
    static constexpr Seconds readingDelay{1};
    /// The longest time between two looks at the clock, which may be set meanwhile.
    static constexpr Seconds longestWait{900};

    /// All but the clock belong to the store, and outlive this.
    RankDaysKeeper(const KeywordList &keywords, const SnapshotIndex &snapshots, StateSaver &saver,
                   std::shared_ptr<Clock> clock);
    ~RankDaysKeeper() override;

    /// Without any check for a keyword that is not tracked.
    [[nodiscard]] const RankDays &of(const QUuid &keywordId) const;
    /// Ends when the history was read as far as it is needed, or could not be. It begins at once.
    Task<void> read(std::stop_token stop);

    /// The state was read: everything may be another. Until then nothing is known.
    void beginAnew();
    /// Keywords whose snapshots are others than before.
    void follow(const QList<QUuid> &keywordIds);
    /// What the history has of these is being changed by a save that was handed over.
    void readAgain(const QSet<QUuid> &keywordIds);
    void remove(const QUuid &keywordId);
    /// These have left the state file for the history.
    void followMove(const std::vector<SharedSnapshot> &snapshots);

Q_SIGNALS:
    /// The value of each of these is another: after a check, at midnight, when the history was
    /// read.
    void changed(const QList<QUuid> &keywordIds);

private:
    struct Seen {
        std::vector<RankCheck> checks;
        /// Days of the state file, with those that lie ahead.
        std::vector<std::int64_t> days;
        bool hasAhead = false;
    };

    [[nodiscard]] Seen seenInState(const QUuid &keywordId) const;
    /// Takes the state file's days out of what is known of the history.
    void hideDaysOfState(const QUuid &keywordId, const Seen &seen);
    /// Works a value out again; true when it is another.
    bool renew(const QUuid &keywordId);
    void renewAll();
    void announce(const QList<QUuid> &keywordIds);
    void followClock();
    void forgetHistory();
    Task<void> followDays(std::stop_token stop);
    Task<void> readSoon(std::stop_token stop);

    void startReading();
    Task<void> readHistory(std::stop_token stop);
    [[nodiscard]] PastRanks::Question nextQuestion() const;
    void take(const PastRanks::Question &question, const PastRanks &answer);

    const KeywordList &m_keywords;
    const SnapshotIndex &m_snapshots;
    StateSaver &m_saver;
    std::shared_ptr<Clock> m_clock;

    Date m_now;
    QHash<QUuid, RankDays> m_values;
    /// Of a keyword that has none.
    RankDays m_unknown;
    /// What the history has, without the days that the state file has as well.
    QHash<QUuid, RankDays> m_past;
    /// Of these it is not known, or not any more.
    QSet<QUuid> m_unread;
    /// Were removed since the start, and may come back.
    QSet<QUuid> m_removed;
    /// Have checks that lie ahead.
    QSet<QUuid> m_ahead;
    /// When the first check of the history that lies ahead is.
    std::optional<Date> m_pastAhead;

    bool m_isReading = false;
    /// The answer that is on its way is old for these.
    QSet<QUuid> m_movedMeanwhile;
    /// It is old altogether.
    bool m_hasForgotten = false;
    std::vector<OneShot<Done>> m_waiting;
    TaskScope m_tasks;
};

} // namespace veltrix
