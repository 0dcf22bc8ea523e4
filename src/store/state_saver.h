// SPDX-License-Identifier: GPL-3.0-or-later
// Saves the state on a thread of its own, and reads the history there.
#pragma once

#include "effects/one_shot.h"
#include "effects/task_scope.h"
#include "store/state_keeper.h"

#include <QObject>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace veltrix
{

/// Owns the state file and the history beside it. One save runs and one waits: a newer state takes
/// the place of the one that waits, so that what is saved is never far behind, however slow the
/// disk is. Questions about the history go before saves, and what is done step by step comes last.
///
/// The saving thread touches the files while anything was handed over that it has not finished, and
/// the main thread only when there is nothing of that kind. All else here belongs to the main
/// thread, which is told everything in the order in which it happened.
class StateSaver final : public QObject
{
    Q_OBJECT

public:
    /// `lock` holds the file's folder; it is looked at before each save, and may be null. `limit`:
    /// bytes of the state file above which its oldest days move to the history.
    StateSaver(QString path, DataFolderLock *lock, qint64 limit, QObject *parent = nullptr);
    /// Ends when all that was handed over was saved, or could not be.
    ~StateSaver() override;

    /// StateFile::load(), on the calling thread.
    PersistedState load(EarlyStateRead *early = nullptr);
    /// Hands StateFile::beginAnew() over; saved() follows.
    void beginAnew(Date now);
    /// StateFile::tryFolderAgain(), on the calling thread, when nothing is being saved.
    void tryFolderAgain();
    /// StateKeeper::dismissNotices(), at once or after what is running.
    void dismissNotices();

    /// StateKeeper::needsTidying() of what was loaded.
    [[nodiscard]] bool needsTidying() const { return m_told.needsTidying; }
    /// Hands over the state that was loaded, for StateKeeper::tidy(); not after a save.
    void tidy(StateChange loaded);
    /// Hands a state over. Copies no record and waits for nothing; saved() follows.
    void save(StateChange change);
    /// Ends when all that was handed over before was saved, or could not be; then
    /// hasUnsavedChange() says which.
    Task<void> finished(std::stop_token stop);
    /// The same without an event loop, for the end of the program. saved() is emitted within.
    void waitUntilFinished();

    // What the history has of a keyword beside the state file, as HistoryDatabase gives it. Whoever
    // asks is resumed between what was moved before and what is moved after, and does right away
    // what is to be true of both together.
    Task<std::vector<RankingTimeline::Observation>> observations(QUuid keywordId,
                                                                 std::stop_token stop);
    Task<std::vector<SharedSnapshot>> records(QUuid keywordId, std::int64_t firstDay, size_t most,
                                              std::stop_token stop);
    Task<PastRanks> pastRanks(PastRanks::Question question, std::stop_token stop);
    Task<std::vector<KeywordStandings>> standings(QUuid keywordId, std::stop_token stop);
    Task<std::vector<KeywordStandings>> newestStandings(std::vector<QUuid> keywordIds, Date latest,
                                                        std::stop_token stop);
    Task<ListingHistory> listingHistory(QUuid appId, std::stop_token stop);
    Task<WrittenNotes> writtenNotes(std::stop_token stop);

    /// Hands over the last references to measurements: to free many of them takes time, which the
    /// saving thread has.
    void free(std::vector<SharedSnapshot> snapshots);

    // As of what was told last.
    [[nodiscard]] const std::optional<PersistenceProblem> &problem() const
    {
        return m_told.problem;
    }
    [[nodiscard]] bool isRead() const { return m_told.isRead; }
    [[nodiscard]] bool hasUnsavedChange() const { return m_told.hasUnsavedChange; }
    /// There is a history beside the state file.
    [[nodiscard]] bool hasHistory() const { return m_told.hasHistory; }
    /// How far the moving of days has come; none while nothing is being moved.
    [[nodiscard]] std::optional<HistoryMove> progress() const { return m_told.progress; }

Q_SIGNALS:
    /// A save has ended, well or not, or a step of what comes last.
    void saved();
    /// These are in the history, and in the state file no longer.
    void moved(const veltrix::MovedDays &moved);
    /// The history has got new standings, or listings have changed.
    void applied(const veltrix::AppliedEdits &edits);

private:
    /// What the files have to tell, by value.
    struct Told {
        std::optional<PersistenceProblem> problem;
        bool isRead = false;
        bool hasUnsavedChange = false;
        bool hasHistory = false;
        bool needsTidying = false;
        std::optional<HistoryMove> progress;
        /// The number of the last state that was tried.
        std::uint64_t tried = 0;
    };
    struct Waiting {
        std::uint64_t number = 0;
        OneShot<Done> ended;
    };
    /// What waits for the saving thread.
    struct Requests {
        std::optional<StateChange> loaded;
        /// When it was asked to begin anew.
        std::optional<Date> anew;
        std::optional<StateChange> change;
        std::uint64_t number = 0;
        std::vector<SharedSnapshot> dropped;
        bool dismisses = false;
        bool isEmpty = true;
    };
    /// Runs on the main thread.
    using News = std::function<void()>;
    /// Runs on the saving thread.
    using Question = std::function<News(const StateKeeper &)>;

    template <class T>
    Task<T> ask(std::function<T(const StateKeeper &)> question, std::stop_token stop);
    [[nodiscard]] Told look(std::uint64_t tried) const;
    /// The saving thread has nothing to do, and gets nothing but from here.
    [[nodiscard]] bool isIdle();
    template <class Add>
    void request(Add &&add);
    void wake();
    /// Asked by the saving thread, under the mutex.
    [[nodiscard]] bool hasWork() const;
    void run();
    void fulfil(Requests requests);
    void tell(News news, std::uint64_t tried);
    void tellState(std::uint64_t tried);
    void takeNews();
    void follow(Told told, MovedDays gone, const AppliedEdits &applied);

    StateKeeper m_keeper;
    Told m_told;
    std::uint64_t m_handedOver = 0;
    std::vector<Waiting> m_waiting;
    std::deque<News> m_news;

    // Shared with the saving thread under the mutex.
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Question> m_questions;
    Requests m_requests;
    std::vector<News> m_freshNews;
    /// The number of the last request that was tried.
    std::uint64_t m_tried = 0;
    bool m_isBusy = false;
    bool m_ends = false;

    /// Started by the first request.
    std::thread m_thread;
    TaskScope m_tasks;
};

} // namespace veltrix
