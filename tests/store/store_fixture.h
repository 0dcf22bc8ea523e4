// SPDX-License-Identifier: GPL-3.0-or-later
// A store on a virtual clock, a temporary folder and services that do as they are told.
#pragma once

#include "effects/one_shot.h"
#include "store/aso_store.h"
#include "store/scratch_folder.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <vector>

namespace veltrix
{

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

/// Something went wrong on the way to the App Store.
class FakeFailure final : public Error
{
public:
    FakeFailure() : Error(QStringLiteral("The network is down.")) {}
};

/// The App Store in memory. Every call is noted; it may be held until release().
class FakeITunesClient final : public ITunesClientProtocol
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
    /// Calls wait for release().
    bool holds = false;
    /// Whether the call of that term fails.
    std::function<bool(const QString &term)> fails;
    QList<ITunesAppResult> results;
    std::optional<ITunesAppResult> found;

private:
    Task<void> pass(std::stop_token stop);

    std::vector<OneShot<Done>> m_held;
};

/// A popularity model that always measures the same.
class FakePopularity final : public PopularityProviding
{
public:
    [[nodiscard]] QString modelVersion() const override { return version; }
    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey> survey, QString country,
                                      std::stop_token stop) override;

    QString version = QStringLiteral("popularity-7");
};

/// Saved ranked results of one keyword.
class FakeRankedApps final : public RankedAppsSaving
{
public:
    Task<std::optional<SavedResults>> savedResults(QString askedKeyword, QString askedCountry,
                                                   std::stop_token stop) override;

    QString keyword;
    QString country;
    SavedResults saved;
};

/// An app of the store: id, name, and the icon that follows from the id.
ITunesAppResult appResult(std::int64_t trackId, const char *name);

class StoreTest : public testing::Test
{
protected:
    StoreTest();
    ~StoreTest() override;

    /// Creates the store, or creates it again from what the old one saved.
    void start();
    void stop() { store.reset(); }
    [[nodiscard]] ASOStore::Arguments arguments() const;

    [[nodiscard]] QString statePath() const { return folder.filePath(text("state.json")); }
    [[nodiscard]] QByteArray stateBytes() const;
    /// Puts a state file in place before start().
    void writeState(const PersistedState &state) const;
    /// What is on disk, read back. Fails the test when it differs from the store.
    PersistedState stateOnDisk() const;

    // What these change is saved when they return.
    AppProfile addApp(std::int64_t trackId = 1, const char *name = "Tideline");
    TrackedKeyword addKeyword(const char *keyword, const char *country = "US");
    /// Reads or saves again what could not be, and waits for it.
    void retryPersistence();
    /// Measures a keyword with whatever the services answer.
    Outcome<DashboardKeywordRow> refresh(const TrackedKeyword &keyword);
    /// The same, when it is sure to succeed.
    DashboardKeywordRow measure(const TrackedKeyword &keyword) { return refresh(keyword).value(); }
    /// A snapshot of the keyword as the current models would have made it, `age` ago.
    KeywordSnapshot snapshotOf(const TrackedKeyword &keyword, Seconds age) const;
    /// Restarts the store with this snapshot added to what it has.
    void plant(const KeywordSnapshot &snapshot);
    /// What the user is told about the state file; empty when all is well.
    [[nodiscard]] QString problem() const;
    /// A keyword's timeline as soon as it is there.
    [[nodiscard]] RankingTimeline timelineOf(QUuid keywordId) const;
    [[nodiscard]] std::vector<Date> measuredAt(const TrackedKeyword &keyword) const;

    std::unique_ptr<QTemporaryDir> scratch = scratchFolder();
    const QTemporaryDir &folder = *scratch;
    std::shared_ptr<VirtualClock> clock = std::make_shared<VirtualClock>();
    std::shared_ptr<FakeITunesClient> client = std::make_shared<FakeITunesClient>();
    std::shared_ptr<FakeITunesClient> discovery = std::make_shared<FakeITunesClient>();
    std::shared_ptr<FakePopularity> popularity = std::make_shared<FakePopularity>();
    std::shared_ptr<FakeRankedApps> rankedApps = std::make_shared<FakeRankedApps>();
    std::stop_source view;
    std::unique_ptr<ASOStore> store;
};

} // namespace veltrix
