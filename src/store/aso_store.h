// SPDX-License-Identifier: GPL-3.0-or-later
// The one owner of everything the user tracks.
#pragma once

#include "effects/clock.h"
#include "effects/ranked_apps_saving.h"
#include "effects/task_scope.h"
#include "model/app_profile.h"
#include "model/dashboard_keyword_row.h"
#include "model/keyword_snapshot.h"
#include "model/tracked_competitor.h"
#include "model/tracked_keyword.h"
#include "scoring/keyword_pipeline.h"
#include "store/annotations.h"
#include "store/keyword_admission.h"
#include "store/keyword_list.h"
#include "store/keyword_refreshes.h"
#include "store/measurement_page.h"
#include "store/rank_days_keeper.h"
#include "store/ranking_timeline.h"
#include "store/removed_tracking.h"
#include "store/snapshot_index.h"
#include "store/state_saver.h"
#include "store/store_error.h"

#include <QObject>

#include <exception>
#include <memory>
#include <optional>
#include <vector>

namespace veltrix
{

/// The single owner and only writer of the tracked state. It lives on the main thread; every change
/// is announced synchronously by a signal and then handed to the saving thread, which is done
/// within moments where the disk is.
class ASOStore final : public QObject, private RefreshedKeywords
{
    Q_OBJECT

public:
    /// Some 4,400 measurements.
    static constexpr qint64 usualStateFileLimit = 16 * 1024 * 1024;

    enum class Opening {
        /// The constructor reads the state file.
        AtOnce,
        /// Whoever makes the store calls open(); until then it is empty and read-only.
        Later,
    };

    struct Arguments {
        /// Path of the state file.
        QString persistenceURL;
        /// Keyword searches go through it.
        std::shared_ptr<ITunesClientProtocol> iTunesClient;
        KeywordPipeline pipeline;
        /// App search, look-ups and ranked apps go through it.
        std::shared_ptr<ITunesClientProtocol> discoveryClient;
        std::shared_ptr<Clock> clock;
        /// Where ranked results are kept; may be null.
        std::shared_ptr<RankedAppsSaving> rankedAppsCache;
        /// Holds the folder of the state file; must outlive the store. May be null.
        DataFolderLock *folderLock = nullptr;
        /// Bytes of the state file above which its oldest days move to the history.
        qint64 stateFileLimit = usualStateFileLimit;
        Opening opening = Opening::AtOnce;
    };

    /// How old a keyword's newest snapshot may be before it is measured again.
    static constexpr Seconds keywordRefreshTTL = KeywordRefreshes::keywordRefreshTTL;
    /// How old it may be in a refresh of all rankings.
    static constexpr Seconds historyStaleness = KeywordRefreshes::historyStaleness;
    /// How old saved ranked apps may be before they are searched afresh.
    static constexpr Seconds rankedAppsReuse{1'800};
    /// How long after a failed save, or a file that could not be reached, it is tried again.
    static constexpr Seconds persistenceRetryInterval{60};
    /// How long after a start the history is looked at: the window comes first.
    static constexpr Seconds historyTidyingDelay{3};

    explicit ASOStore(Arguments arguments, QObject *parent = nullptr);
    /// Ends when the last change was saved, or could not be.
    ~ASOStore() override;

    /// Reads the state file and announces what it holds; not after it was read. A damaged file
    /// leaves the store empty; one that cannot be reached leaves it read-only, until
    /// retryPersistence() reaches it. What `early` has read of it is not read again; it may be
    /// null.
    void open(EarlyStateRead *early = nullptr);

    // What is tracked. Lists are in the order of the state file.
    [[nodiscard]] const QList<AppProfile> &apps() const;
    [[nodiscard]] const QList<TrackedKeyword> &trackedKeywords() const override;
    [[nodiscard]] const QList<TrackedCompetitor> &competitors() const;
    /// All snapshots of all keywords that the state file has, in its order. For whole-state uses
    /// only; a keyword's own come from keywordSnapshots() and measurements().
    [[nodiscard]] std::vector<SharedSnapshot> snapshots() const;

    [[nodiscard]] std::optional<AppProfile> app(QUuid id) const override;
    [[nodiscard]] std::optional<TrackedKeyword> trackedKeyword(QUuid id) const override;
    [[nodiscard]] QList<TrackedKeyword> keywordsOfApp(QUuid appId) const;
    [[nodiscard]] QList<TrackedCompetitor> competitorsOfApp(QUuid appId) const;

    // Keywords and their measurements.
    /// Adds the text as given, or returns the keyword that is there already (same app, same text
    /// ignoring case, same storefront). Throws StoreError 404 "App not found", and 422 with the
    /// reason for what can never be measured (keywordRefusal()).
    TrackedKeyword addTrackedKeyword(QUuid appId, QString keyword, QString country);
    /// The same for several texts, of one storefront or of many, with one save; what cannot be
    /// measured is left out and named.
    KeywordAdmission addTrackedKeywords(QUuid appId, const QList<KeywordToTrack> &keywords);
    KeywordAdmission addTrackedKeywords(QUuid appId, const QStringList &keywords,
                                        const QString &country);
    /// Why a tracked keyword can never be measured, as words (refusalReason(),
    /// appGoneReason()); empty for one that can. Older files may hold such keywords.
    [[nodiscard]] std::optional<QString> unmeasurableReason(const TrackedKeyword &keyword) const;
    /// Keywords whose app is not tracked; no app's list shows them.
    [[nodiscard]] QList<TrackedKeyword> keywordsWithoutApp() const;
    /// Removes a keyword with its snapshots. Unknown ids change nothing. As with every removal,
    /// restore() undoes it.
    RemovedTracking removeKeyword(QUuid id);
    /// Removes several keywords with one save.
    RemovedTracking removeKeywords(const QList<QUuid> &ids);
    /// Queues keywords for measuring in the background.
    void queueKeywordRefreshes(const QList<TrackedKeyword> &keywords);
    /// Drops the queue and stops the measurement in progress; the keywords stay saved.
    void stopKeywordRefreshes();
    [[nodiscard]] const RefreshProgress &refreshProgress() const;
    /// Brings one keyword up to date. Throws StoreError 404 "Tracked keyword not found" or "App not
    /// found", the pipeline's errors, or Cancelled when the keyword is deleted meanwhile.
    Task<DashboardKeywordRow> refreshKeyword(QUuid id, std::stop_token stop);
    /// Measures every keyword whose ranking is stale; nothing when that is being done already.
    /// Failures show in historyRefreshError().
    Task<void> refreshHistory(std::stop_token stop);
    [[nodiscard]] std::optional<QString> historyRefreshError() const;
    [[nodiscard]] bool isRefreshingHistory() const;
    /// All of measuring; the operations above lead there.
    [[nodiscard]] KeywordRefreshes &refreshes() { return *m_refreshes; }

    [[nodiscard]] DashboardKeywordRow dashboardRow(const TrackedKeyword &keyword) const;
    /// Those that the state file has, its newest two days among them; oldest first.
    [[nodiscard]] std::vector<SharedSnapshot> keywordSnapshots(QUuid keywordId) const;
    /// A part of all that were ever made of a keyword, in the state file and in the history: from
    /// page.firstDay on, oldest first, one a UTC day. However many there are, no more than a page
    /// is in memory. Throws DatabaseError, or DecodingError when the history is damaged.
    Task<MeasurementPage> measurements(QUuid keywordId, PageStart page, std::stop_token stop);
    /// The newest as of now: while a snapshot's date lies ahead by more than a clock may be wrong,
    /// it is not taken for one. Null when there is none.
    [[nodiscard]] SharedSnapshot newestSnapshot(QUuid keywordId) const override;
    /// From the first measurement on, without what lies ahead. Throws as measurements() does.
    Task<RankingTimeline> rankingTimeline(QUuid keywordId, std::stop_token stop);
    /// The same of the state file alone: what there is to show of a history that cannot be read.
    [[nodiscard]] RankingTimeline recentTimeline(QUuid keywordId) const;
    /// The movement to the newest measurement that does not lie ahead; absent when there is none.
    [[nodiscard]] std::optional<RankMovement> latestMovement(QUuid keywordId) const;

    /// What is known of the keyword's ranks over the last days and of its best rank; nothing is
    /// read for it. Right before keywordChanged() and rankDaysChanged() are emitted.
    [[nodiscard]] const RankDays &rankDays(QUuid keywordId) const;
    /// Ends when rankDays() of all keywords are whole, or the history could not be read.
    Task<void> rankDaysRead(std::stop_token stop);

    // Apps and competitors.
    /// Throws StoreError 422 "Missing trackId on selected result".
    AppProfile addApp(const ITunesAppResult &result, QString country);
    /// Looks the id up first. Throws StoreError 404 "App not found on iTunes Lookup" or the
    /// client's errors.
    Task<AppProfile> addApp(std::int64_t trackId, QString country, std::stop_token stop);
    /// Removes an app with its keywords, their snapshots and its competitors.
    RemovedTracking removeApp(QUuid id);
    /// Puts back what was removed, where it was, with one save. An app, keyword or competitor that
    /// was added anew meanwhile stays the one that there is; its keyword then has the measurements
    /// of both, of each UTC day the newer. Throws StoreError 404 "App not found" when the app of a
    /// keyword or competitor is not tracked any more; then nothing is changed.
    RestoredTracking restore(RemovedTracking removed);
    void addCompetitor(const ITunesAppResult &result, QUuid appId, QString country);
    Task<void> updateCompetitorSeller(QUuid competitorId, std::stop_token stop);
    RemovedTracking removeCompetitor(QUuid id);

    // The App Store, for views.
    Task<QList<ITunesAppResult>> searchApps(QString term, QString country, std::int64_t limit,
                                            std::stop_token stop);
    /// Throws StoreError 404 "App unavailable in this storefront." when there is no such app.
    Task<ITunesAppResult> appDetails(std::int64_t trackId, QString country, std::stop_token stop);
    /// A keyword search through the client that measures keywords.
    Task<QList<ITunesAppResult>> searchKeyword(QString keyword, QString country, std::int64_t limit,
                                               std::stop_token stop);
    /// The apps that rank for a keyword, best first.
    Task<QList<ITunesAppResult>> rankedApps(DashboardKeywordRow row, std::stop_token stop);
    /// What is kept of a keyword's search, however old; nothing without a cache. Throws Cancelled
    /// only.
    Task<std::optional<SavedResults>> savedRankedApps(DashboardKeywordRow row,
                                                      std::stop_token callersStop);

    // What the history beside the state file knows of others. Asked on the saving thread; what a
    // measurement adds is there when standingsKept() tells. Throws DatabaseError or DecodingError
    // when the history cannot be read.
    /// Where others stood in the measurements of a keyword, of all days that were kept, oldest
    /// first. What lies ahead of the clock is left out.
    Task<std::vector<KeywordStandings>> standings(QUuid keywordId, std::stop_token stop);
    /// The newest of each keyword of an app; none of those that have none.
    Task<std::vector<KeywordStandings>> newestStandings(QUuid appId, std::stop_token stop);
    /// What was noticed of an own app or a competitor, by its id in apps() or competitors().
    Task<ListingHistory> listingHistory(QUuid appId, std::stop_token stop);

    // Tags and notes. They are in memory once they were read, which begins with the start; changes
    // count at once, before that too.
    /// Ends when they were read. While they cannot be, it waits; persistenceProblem() says why.
    Task<void> annotationsRead(std::stop_token stop);
    /// The same for whoever cannot wait: throws DatabaseError or DecodingError when the last
    /// attempt to read them failed.
    Task<void> requireAnnotations(std::stop_token stop);
    /// Of a keyword, in the order of the alphabet.
    [[nodiscard]] QStringList tags(QUuid keywordId) const;
    /// Of all keywords of an app, in the order of the alphabet, each once.
    [[nodiscard]] QStringList allTags(QUuid appId) const;
    /// Puts a tag on keywords, or takes it off. Names that differ by case are one tag. Throws
    /// StoreError 422 with the tagRefusal() of a name that none can have.
    void setTag(const QList<QUuid> &keywordIds, const QString &tag, bool isOn);
    /// Of an app, by their days and then as they were written.
    [[nodiscard]] QList<AppNote> notes(QUuid appId) const;
    /// Writes a note, or changes the one with its id; one without an id gets one. The text is
    /// trimmed. Throws StoreError 422 for a note without a text or with more than mostNoteLength
    /// characters, and 404 "App not found".
    AppNote putNote(AppNote note);
    /// What it removed, for putNote(), which undoes it.
    std::optional<AppNote> removeNote(QUuid id);
    static constexpr qsizetype mostNoteLength = 200;

    // The state file.
    /// What went wrong with the state file, in words for the user, and what can be done about it.
    /// Empty when all is well.
    [[nodiscard]] std::optional<PersistenceProblem> persistenceProblem() const;
    /// Whether it is known what was saved. Until then the lists are empty, and what would change
    /// them throws StoreError 423.
    [[nodiscard]] bool isStateRead() const;
    /// A change could not be saved and is in memory alone. One that is being saved is not told yet.
    [[nodiscard]] bool hasUnsavedChange() const override;
    /// Ends when all changes made before were saved, or could not be.
    Task<void> saved(std::stop_token stop);
    /// The same without an event loop.
    void waitUntilSaved();
    /// For the end of the program: waits, and tries once more to save what could not be. False when
    /// it still cannot.
    [[nodiscard]] bool saveBeforeEnd();
    /// Reads the file that could not be reached, or hands over again the change that could not be
    /// saved. Happens by itself every minute.
    void retryPersistence();
    /// Gives up a file that could not be reached: keeps it under another name, and starts with
    /// nothing. Then stateRead() is emitted; when that fails, persistenceProblem() says why.
    void beginAnew();
    /// How far the moving of the oldest days into the history has come; none while there is none.
    [[nodiscard]] std::optional<HistoryMove> historyMove() const;
    /// Forgets a problem about which nothing can be done.
    void dismissPersistenceNotices();

    [[nodiscard]] Clock &clock() const;

Q_SIGNALS:
    void appsChanged();
    void keywordAdded(QUuid id);
    /// A keyword has a new newest snapshot.
    void keywordChanged(QUuid id);
    void keywordRemoved(QUuid id);
    /// rankDays() of these are others: after a check, when the UTC day has changed, and when the
    /// history was read.
    void rankDaysChanged(const QList<QUuid> &ids);
    void competitorsChanged();
    /// What a removal took; the last of its signals.
    void trackingRemoved(const RemovedTracking &removed);
    void historyRefreshErrorChanged();
    void isRefreshingHistoryChanged();
    void refreshProgressChanged();
    void persistenceProblemChanged();
    void historyMoveChanged();
    /// standings() of these have become more.
    void standingsKept(const QList<QUuid> &keywordIds);
    /// listingHistory() of these is another.
    void listingsChanged(const QList<QUuid> &appIds);
    void tagsChanged(const QList<QUuid> &keywordIds);
    void notesChanged(QUuid appId);
    /// The state was read later than at the start: everything may be another. Follows the signals
    /// of the single lists.
    void stateRead();

private:
    void adopt(PersistedState state);
    /// Hands the state over to be saved.
    void save();
    [[nodiscard]] StateChange wholeState() const;
    /// Finishes what an earlier run has left to do with the history.
    Task<void> tidyHistory(std::stop_token stop);
    void followSaver();
    [[nodiscard]] std::vector<RankingTimeline::Observation> observationsOf(QUuid keywordId) const;
    [[nodiscard]] RankingTimeline
    timelineOf(QUuid keywordId, std::vector<RankingTimeline::Observation> observations) const;
    /// Throws StoreError 423 while the state has not been read.
    void requireStateRead() const;
    /// Announces a problem that has changed, and sees to it that it is tried again.
    void followPersistence();
    [[nodiscard]] bool canBeTriedAgain() const;
    Task<void> retryPersistenceEveryMinute(std::stop_token stop);
    void keepSnapshot(SharedSnapshot snapshot, const QList<ITunesAppResult> &results) override;
    /// What a measurement of a keyword says of the apps that are watched.
    [[nodiscard]] KeepStandings standingsEdit(const KeywordSnapshot &snapshot,
                                              const TrackedKeyword &keyword,
                                              const QList<ITunesAppResult> &results) const;
    Task<void> readWrittenNotes(std::stop_token stop);
    static DashboardKeywordRow rowOf(const TrackedKeyword &keyword, const SharedSnapshot &newest);

    void renumberApps();
    void takeKeywords(const QSet<QUuid> &ids, RemovedTracking &removed);
    template <class IsTaken>
    void takeCompetitors(IsTaken &&isTaken, RemovedTracking &removed);
    void rememberOwner(QUuid appId, RemovedTracking &removed) const;
    void announceRemoved(const std::vector<Placed<TrackedKeyword>> &keywords);
    void rejoin(const QUuid &removed, const QUuid &present);
    /// Under which id each app of what was removed is there, or will be.
    [[nodiscard]] QHash<QUuid, QUuid> presentApps(const RemovedTracking &removed) const;
    /// Keywords that others have joined; only their measurements are more.
    QSet<QUuid> restoreKeywords(std::vector<Placed<TrackedKeyword>> keywords,
                                std::vector<FiledSnapshot> snapshots,
                                const QHash<QUuid, QUuid> &appIds, RestoredTracking &restored);
    /// False when all of them are there already.
    bool restoreCompetitors(std::vector<Placed<TrackedCompetitor>> competitors,
                            const QHash<QUuid, QUuid> &appIds);

    std::shared_ptr<ITunesClientProtocol> m_iTunesClient;
    std::shared_ptr<ITunesClientProtocol> m_discoveryClient;
    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<RankedAppsSaving> m_rankedAppsCache;
    StateSaver m_saver;
    /// As it was announced last.
    std::optional<PersistenceProblem> m_announcedProblem;
    std::optional<HistoryMove> m_announcedMove;
    /// Removed and put back since the last save.
    StateChange::Removals m_removals;
    /// Since the last save.
    std::vector<HistoryEdit> m_edits;
    Annotations m_annotations;
    /// Why they could not be read, until it is dismissed.
    std::optional<QString> m_annotationsProblem;
    /// The same until they were read.
    std::exception_ptr m_annotationsFailure;
    std::vector<OneShot<Done>> m_annotationsAwaited;
    /// Wait for one attempt only.
    std::vector<OneShot<Done>> m_annotationsRequired;

    QList<AppProfile> m_apps;
    KeywordList m_keywords;
    SnapshotIndex m_snapshots;
    QList<TrackedCompetitor> m_competitors;

    /// As it was announced last.
    bool m_wasRead = false;
    bool m_isRetryingPersistence = false;
    // Last, so that what runs ends while everything else still lives.
    std::unique_ptr<RankDaysKeeper> m_rankDays;
    std::unique_ptr<KeywordRefreshes> m_refreshes;
    TaskScope m_tasks;
};

} // namespace veltrix
