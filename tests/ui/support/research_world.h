// SPDX-License-Identifier: GPL-3.0-or-later
// A world whose App Store has rivals, screenshots and rankings, and whose keywords have a history.
#pragma once

#include "ui/support/ui_world.h"

#include <QHash>

namespace veltrix
{

/// An App Store that answers each term with its own results and each id with its own app. Every
/// call is noted; calls may be held, and may fail.
class FakeAppStore final : public ITunesClientProtocol
{
public:
    Task<QList<ITunesAppResult>> search(QString term, QString country, std::int64_t limit,
                                        std::stop_token stop) override;
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t trackId, QString country,
                                                std::stop_token stop) override;

    /// Lets every held call go on.
    void release();

    /// "term/COUNTRY/limit" and "id/COUNTRY" of each call, in order.
    QStringList searches;
    QStringList lookups;
    /// Calls under way.
    int inFlight = 0;
    bool holds = false;
    /// Whether the call of that term or id fails.
    std::function<bool(const QString &what)> fails;
    /// Results of the terms that are not listed.
    QList<ITunesAppResult> results;
    /// Of a term, or of one in a storefront: "term/COUNTRY".
    QHash<QString, QList<ITunesAppResult>> resultsOf;
    QHash<std::int64_t, ITunesAppResult> apps;

private:
    Task<void> pass(QString what, std::stop_token stop);

    std::vector<OneShot<Done>> m_held;
};

/// The sample world with an App Store of rivals behind both clients, saved ranked apps, and a
/// history of 120 days for "collage maker".
class ResearchWorld : public UiWorld
{
public:
    ResearchWorld();

    /// The row of a sample keyword.
    [[nodiscard]] DashboardKeywordRow row(const char *keyword) const;
    [[nodiscard]] QUuid appId() const { return store->apps().first().id; }
    /// The store again, from what it saved; with the App Store of rivals.
    void restartStore();

    std::shared_ptr<FakeAppStore> appStore = std::make_shared<FakeAppStore>();
    std::shared_ptr<FakeRankedApps> saved = std::make_shared<FakeRankedApps>();
};

/// "Foxglove Film Camera", with everything in its listing.
ITunesAppResult foxglove();
/// `count` made-up apps that rank for a keyword, ids from 1001.
QList<ITunesAppResult> rankedApps(int count);
/// Foxglove at `position` (0: not at all) among `count` others.
QList<ITunesAppResult> rankedWith(int position, int count);

} // namespace veltrix
