// SPDX-License-Identifier: GPL-3.0-or-later
// What a research page finds out about an app, without its looks.
#pragma once

#include "ui/competitors/keyword_coverage.h"
#include "ui/competitors/open_research.h"
#include "ui/listing/similar_apps.h"

namespace veltrix
{

/// Loads the app, then checks its keywords and finds similar apps. Its destruction stops all three.
class AppResearch final : public QObject
{
    Q_OBJECT

public:
    AppResearch(ASOStore &store, const ResearchSelection &selection,
                const std::optional<QUuid> &appId, QObject *parent = nullptr);

    void start();
    /// Again after a failure.
    void retry();
    /// The checks again after a failure, and the similar apps where they failed with them.
    void retryChecks();
    /// Another app of the user's: nothing is searched again.
    void setApp(const std::optional<QUuid> &appId);
    [[nodiscard]] const std::optional<QUuid> &appId() const { return m_appId; }
    /// The App Store id of the user's app, if there is one.
    [[nodiscard]] std::optional<std::int64_t> ownTrackId() const;
    /// Nothing new is searched while something else is looked at.
    void pause();
    void unpause();

    [[nodiscard]] const Loadable<ITunesAppResult> &app() const { return m_app.state(); }
    /// Named as the App Store does once it is loaded.
    [[nodiscard]] const ResearchSelection &selection() const { return m_selection; }
    [[nodiscard]] KeywordCoverage &coverage() { return m_coverage; }
    [[nodiscard]] SimilarApps &similar() { return m_similar; }
    /// What keeps similar apps away is what coverage().error() says already.
    [[nodiscard]] bool isSimilarFailureTold() const;

Q_SIGNALS:
    /// app() is another; the checks begin after it.
    void changed();

private:
    void showApp();
    void startSimilar();

    ASOStore &m_store;
    ResearchSelection m_selection;
    std::optional<QUuid> m_appId;
    bool m_isPaused = false;
    bool m_retriesSimilar = false;
    KeywordCoverage m_coverage;
    SimilarApps m_similar;
    Loader<ITunesAppResult> m_app;
};

} // namespace veltrix
