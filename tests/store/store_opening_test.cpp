// SPDX-License-Identifier: GPL-3.0-or-later
// A store that is made before its state file is read: empty and read-only until it is opened.
#include "effects/atomic_file.h"
#include "store/early_state_read.h"
#include "store/store_fixture.h"

#include <QDir>
#include <QFile>

namespace veltrix
{
namespace
{

class StoreOpening : public StoreTest
{
protected:
    /// A file of one app and one keyword, and a store over it that is not opened.
    StoreOpening()
    {
        addKeyword("moon");
        stop();
        saved = readWholeFile(statePath());
        openLater();
    }
    ~StoreOpening() override { stop(); }

    void openLater()
    {
        ASOStore::Arguments changed = arguments();
        changed.opening = ASOStore::Opening::Later;
        store = std::make_unique<ASOStore>(std::move(changed));
    }

    QByteArray saved;
};

TEST_F(StoreOpening, NothingIsThereAndNothingCanBeAddedBefore)
{
    EXPECT_TRUE(store->apps().isEmpty());
    EXPECT_TRUE(store->trackedKeywords().isEmpty());
    EXPECT_FALSE(store->isStateRead());
    EXPECT_EQ(problem(), QString()) << "nothing has gone wrong";
    EXPECT_THROW(addApp(), StoreError);
    EXPECT_TRUE(store->saveBeforeEnd());
    stop();
    EXPECT_EQ(readWholeFile(statePath()), saved);
}

TEST_F(StoreOpening, AnnouncesWhatTheFileHolds)
{
    QStringList signalled;
    const auto note = [&](const char *name) {
        return [&signalled, name] {
            signalled.append(text(name));
        };
    };
    QObject::connect(store.get(), &ASOStore::appsChanged, note("apps"));
    QObject::connect(store.get(), &ASOStore::competitorsChanged, note("competitors"));
    QObject::connect(store.get(), &ASOStore::stateRead, note("read"));
    QObject::connect(store.get(), &ASOStore::persistenceProblemChanged, note("problem"));
    EarlyStateRead early(statePath());
    store->open(&early);
    EXPECT_EQ(signalled, (QStringList{text("apps"), text("competitors"), text("read")}));
    ASSERT_EQ(store->trackedKeywords().size(), 1);
    EXPECT_EQ(store->trackedKeywords().constFirst().keyword, text("moon"));
    EXPECT_EQ(stateBytes(), saved);

    const TrackedKeyword added = addKeyword("tide");
    measure(added);
    EXPECT_EQ(stateOnDisk().trackedKeywords.size(), 2);
}

TEST_F(StoreOpening, KnowsTheRanksOnceTheStateIsThere)
{
    store->open();
    const TrackedKeyword keyword = store->trackedKeywords().constFirst();
    plant(snapshotOf(keyword, Seconds(3'600)));
    stop();
    openLater();
    EXPECT_FALSE(store->rankDays(keyword.id).latest());
    store->open();
    EXPECT_TRUE(store->rankDays(keyword.id).latest());
}

TEST_F(StoreOpening, AFileThatCannotBeReadIsToldAndTriedAgain)
{
    ASSERT_TRUE(QFile::rename(statePath(), statePath() + text(".away")));
    ASSERT_TRUE(QDir().mkdir(statePath()));
    testing::internal::CaptureStdout();
    store->open();
    EXPECT_NE(testing::internal::GetCapturedStdout(), "");
    EXPECT_FALSE(store->isStateRead());
    EXPECT_NE(problem(), QString());
    ASSERT_TRUE(QDir().rmdir(statePath()));
    ASSERT_TRUE(QFile::rename(statePath() + text(".away"), statePath()));
    retryPersistence();
    EXPECT_TRUE(store->isStateRead());
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(store->trackedKeywords().size(), 1);
}

} // namespace
} // namespace veltrix
