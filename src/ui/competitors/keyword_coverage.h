// SPDX-License-Identifier: GPL-3.0-or-later
// Checks how an app ranks for the phrases of its own listing, one search after another.
#pragma once

#include "effects/one_shot.h"
#include "scoring/app_keyword_check.h"
#include "store/aso_store.h"
#include "ui_kit/loading/loader.h"

#include <QStringList>

namespace veltrix
{

/// The coverage of a researched app. Results stay when it is stopped or a search fails; resume()
/// goes on with the phrases that are left.
class KeywordCoverage final : public QObject
{
    Q_OBJECT

public:
    /// Phrases of a listing that are checked.
    static constexpr qsizetype phraseLimit = 10;
    /// Results asked for in each search.
    static constexpr std::int64_t searchLimit = 100;

    /// Idle while nothing was started, Stopped by the user or a pause, Failed with error().
    enum class Phase { Idle, Checking, Stopped, Failed, Finished };

    explicit KeywordCoverage(ASOStore &store, QObject *parent = nullptr);

    /// Forgets what was checked and checks the phrases of `app` in that storefront. `ownTrackId` is
    /// the App Store id of the user's own app, if there is one.
    void start(const ITunesAppResult &app, const QString &country,
               std::optional<std::int64_t> ownTrackId);
    /// Another app is the user's own: its ranks are those of the searches that were made.
    void setOwnApp(std::optional<std::int64_t> ownTrackId);
    void stop();
    /// Goes on after stop() or a failure.
    void resume();
    /// Searches nothing after the search that is under way, until unpause().
    void pause();
    void unpause();
    /// stop() while it checks, else resume().
    void toggle();

    [[nodiscard]] Phase phase() const;
    /// Checked phrases in the order of the listing.
    [[nodiscard]] const QList<AppKeywordCheck> &checks() const { return m_checks; }
    /// Phrases that are not checked yet; while checking, the first is being searched.
    [[nodiscard]] const QStringList &pending() const { return m_pending; }
    [[nodiscard]] qsizetype total() const { return m_checks.size() + m_pending.size(); }
    /// Checked phrases for which the app ranks.
    [[nodiscard]] int ranked() const;
    /// What went wrong, in words for the user; empty unless failed.
    [[nodiscard]] QString error() const { return m_run.state().error(); }

    /// "6 / 8", or "Not checked" before the first check is done.
    [[nodiscard]] QString coverageText() const;
    /// "Checking “film” · 4 of 10", "Stopped · 3 of 10 checked", or empty in other phases.
    [[nodiscard]] QString progressText() const;
    /// The share of phrases that are checked, 0 to 1; nothing without phrases.
    [[nodiscard]] std::optional<double> fraction() const;

Q_SIGNALS:
    void restarted();
    void checked(const AppKeywordCheck &check);
    /// The own positions of checks() are others.
    void ownAppChanged();
    /// Phase, pending() or error() is another.
    void progressChanged();

private:
    void run();
    Task<Done> checkPending(std::stop_token stop);
    [[nodiscard]] std::optional<std::int64_t>
    ownPositionAmong(const QList<std::int64_t> &found) const;
    [[nodiscard]] AppKeywordCheck checkOf(const QString &phrase,
                                          const QList<ITunesAppResult> &results) const;

    ASOStore &m_store;
    std::int64_t m_trackId = 0;
    std::optional<std::int64_t> m_ownTrackId;
    QString m_country;
    QList<AppKeywordCheck> m_checks;
    /// App Store ids in the order of the results, one list a check.
    QList<QList<std::int64_t>> m_found;
    QStringList m_pending;
    bool m_isPaused = false;
    /// A pause has ended the checks, and its end goes on with them.
    bool m_isHeld = false;
    /// Loaded once nothing is pending, or a pause has ended it.
    Loader<Done> m_run;
};

} // namespace veltrix
