// SPDX-License-Identifier: GPL-3.0-or-later
// How it is found out who is above the user's app, without its looks.
#pragma once

#include "store/aso_store.h"
#include "ui/competitors/above_you.h"
#include "ui_kit/loading/loader.h"

namespace veltrix
{

/// Reads what is kept of one keyword and follows it; tracks apps as competitors.
class AboveYouLoading final : public QObject
{
    Q_OBJECT

public:
    AboveYouLoading(ASOStore &store, const DashboardKeywordRow &keyword, QObject *parent = nullptr);

    void start();
    void retry() { m_sources.retry(); }
    [[nodiscard]] const Loadable<AboveYou::Sources> &state() const { return m_sources.state(); }
    /// What there is to show; empty while state() has nothing.
    [[nodiscard]] AboveYou above() const;

    /// Makes the app a competitor in the keyword's storefront. What of it isn't at hand is looked
    /// up first.
    void track(const AppAbove &app);
    /// "Looking up Hazel Presets…", or what went wrong; empty else.
    [[nodiscard]] QString trackingText() const;
    [[nodiscard]] bool isTrackingFailed() const { return m_lookUp.state().is<LoadFailed>(); }
    [[nodiscard]] bool isLookingUp() const { return m_lookUp.state().isUnderWay(); }

Q_SIGNALS:
    /// above() or state() is another.
    void changed();
    void trackingChanged();
    /// The keyword is not tracked any more.
    void keywordGone();

private:
    void addCompetitor(const ITunesAppResult &app);

    ASOStore &m_store;
    DashboardKeywordRow m_keyword;
    QString m_lookedUp;
    Loader<AboveYou::Sources> m_sources;
    Loader<ITunesAppResult> m_lookUp;
};

} // namespace veltrix
