// SPDX-License-Identifier: GPL-3.0-or-later
// What is kept of a tracked competitor over time, without its looks.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui/competitors/change_log.h"
#include "ui/competitors/shared_keyword_column.h"
#include "ui_kit/loading/loader.h"

#include <QTimer>

namespace veltrix
{

/// Compares an App Store app with one of the user's, as long as it is tracked as its competitor in
/// any storefront: where both rank, and what changed in its listing. Follows the store.
class CompetitorComparison final : public QObject
{
    Q_OBJECT

public:
    CompetitorComparison(ASOStore &store, std::int64_t trackId, const std::optional<QUuid> &appId,
                         QObject *parent = nullptr);

    /// Another app of the user's.
    void setApp(const std::optional<QUuid> &appId);
    /// Nothing is asked until unpause(), which asks for what has changed meanwhile; so it begins.
    void pause();
    void unpause();
    /// Asks again for what could not be read.
    void retry();

    /// Its records, one a storefront; empty while it is not tracked.
    [[nodiscard]] const QList<TrackedCompetitor> &competitors() const { return m_competitors; }
    [[nodiscard]] bool isTracked() const { return !m_competitors.isEmpty(); }
    [[nodiscard]] RivalIcons icons() const;

    [[nodiscard]] const Loadable<std::vector<TheirCheck>> &checks() const
    {
        return m_checks.state();
    }
    [[nodiscard]] const SharedKeywords &shared() const { return m_shared; }
    [[nodiscard]] const Loadable<ListingPast> &past() const { return m_past.state(); }
    /// Empty while past() is not there.
    [[nodiscard]] std::vector<ChangeLogEntry> log() const;

Q_SIGNALS:
    /// competitors() are others, and perhaps isTracked().
    void competitorsChanged();
    /// checks() or shared() is another.
    void sharedChanged();
    /// past() is another.
    void pastChanged();

private:
    void follow();
    [[nodiscard]] bool isOfApp(const QUuid &keywordId) const;
    void findCompetitors();
    void askWhatIsWanted();
    /// Asks now, or once the question before was answered, or the page is looked at.
    void askChecks();
    void askPast();
    /// What a check found of others is kept behind it, or cannot be.
    Task<void> compareWhenSaved(std::stop_token stop);
    void compare();

    ASOStore &m_store;
    std::int64_t m_trackId;
    std::optional<QUuid> m_appId;
    QList<TrackedCompetitor> m_competitors;
    bool m_isPaused = true;
    bool m_wantsChecks = false;
    bool m_wantsPast = false;
    bool m_isAwaitingSave = false;
    SharedKeywords m_shared;
    /// Many keywords that go at once are one change.
    QTimer m_compareSoon;
    QTimer m_askSoon;
    Loader<std::vector<TheirCheck>> m_checks;
    Loader<ListingPast> m_past;
    TaskScope m_tasks;
};

} // namespace veltrix
