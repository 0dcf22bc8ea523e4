// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/measuring/automatic_refresh.h"

#include "store/store_fixture.h"
#include "ui/measuring/measuring_status.h"

#include <QDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class AutomaticRefreshTest : public StoreTest
{
protected:
    void follow()
    {
        status = std::make_unique<MeasuringStatus>(store->refreshes());
        refresh = std::make_unique<AutomaticRefresh>(*store, *status);
    }
    ~AutomaticRefreshTest() override
    {
        refresh.reset();
        status.reset();
    }

    std::unique_ptr<MeasuringStatus> status;
    std::unique_ptr<AutomaticRefresh> refresh;
};

TEST_F(AutomaticRefreshTest, MeasuresWhileItIsActiveAndNotOtherwise)
{
    addKeyword("moon");
    follow();
    clock->advance(Seconds(7'200));
    EXPECT_EQ(client->searches.size(), 0);
    refresh->setActive(true);
    EXPECT_EQ(client->searches.size(), 1);
    refresh->setActive(false);
    clock->advance(Seconds(100'000));
    EXPECT_EQ(client->searches.size(), 1);
}

TEST_F(AutomaticRefreshTest, AStopOfTheUsersBeginsARestThatHisRefreshEnds)
{
    addKeyword("moon");
    client->holds = true;
    follow();
    refresh->setActive(true);
    status->stop();
    clock->advance(Seconds(1'800));
    EXPECT_FALSE(store->isRefreshingHistory());
    status->refresh();
    EXPECT_TRUE(store->isRefreshingHistory());
}

TEST_F(AutomaticRefreshTest, AFailureIsTriedAgainAtOnceWhenTheNetworkReturns)
{
    addKeyword("moon");
    client->fails = [](const QString &) {
        return true;
    };
    follow();
    refresh->setActive(true);
    EXPECT_EQ(client->searches.size(), 1);
    client->fails = nullptr;
    refresh->retrySoon();
    EXPECT_EQ(client->searches.size(), 2);
}

TEST_F(AutomaticRefreshTest, AStateThatIsReadLateIsMeasuredAtOnce)
{
    addKeyword("moon");
    const QString away = folder.path() + text("-away");
    stop();
    ASSERT_TRUE(QDir().rename(folder.path(), away));
    testing::internal::CaptureStdout();
    start();
    testing::internal::GetCapturedStdout();
    ASSERT_FALSE(store->isStateRead());
    follow();
    refresh->setActive(true);
    EXPECT_EQ(client->searches.size(), 0);
    ASSERT_TRUE(QDir().rename(away, folder.path()));
    store->retryPersistence();
    EXPECT_EQ(client->searches.size(), 1);
}

TEST_F(AutomaticRefreshTest, MayGoWhileItMeasures)
{
    addKeyword("moon");
    client->holds = true;
    follow();
    refresh->setActive(true);
    EXPECT_TRUE(store->isRefreshingHistory());
    refresh.reset();
    EXPECT_FALSE(store->isRefreshingHistory());
}

} // namespace
} // namespace veltrix
