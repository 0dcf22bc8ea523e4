// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/closing.h"

#include "store/store_fixture.h"

#include <QDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using Verdict = Closing::Verdict;

class ClosingTest : public StoreTest
{
protected:
    ~ClosingTest() override { bringDisk(); }
    void takeDiskAway() const { ASSERT_TRUE(QDir().rename(folder.path(), away())); }
    void bringDisk() const { QDir().rename(away(), folder.path()); }
    [[nodiscard]] QString away() const { return folder.path() + text("-away"); }
    /// Leaves a change in memory alone.
    void changeWithoutDisk()
    {
        addKeyword("moon");
        takeDiskAway();
        testing::internal::CaptureStdout();
        addKeyword("tide");
        testing::internal::GetCapturedStdout();
        ASSERT_TRUE(store->hasUnsavedChange());
    }
    Verdict request()
    {
        testing::internal::CaptureStdout();
        const Verdict verdict = closing.request();
        testing::internal::GetCapturedStdout();
        return verdict;
    }

    Closing closing{*store};
};

TEST_F(ClosingTest, WithEverythingSavedTheWindowCloses)
{
    addKeyword("moon");
    EXPECT_EQ(request(), Verdict::Close);
}

TEST_F(ClosingTest, AChangeIsSavedFirstWhenThatIsPossibleNow)
{
    changeWithoutDisk();
    bringDisk();
    EXPECT_EQ(request(), Verdict::Close);
    EXPECT_EQ(stateOnDisk().trackedKeywords.size(), 2);
}

TEST_F(ClosingTest, AChangeThatCannotBeSavedIsAskedAboutOnceAtATime)
{
    changeWithoutDisk();
    EXPECT_EQ(request(), Verdict::Ask);
    EXPECT_TRUE(closing.question().message.endsWith(store->persistenceProblem()->text));
    EXPECT_EQ(request(), Verdict::Wait);
    closing.questionClosed();
    EXPECT_EQ(request(), Verdict::Ask);
}

TEST_F(ClosingTest, AChangeThatIsGivenUpIsNotAskedAboutAgain)
{
    changeWithoutDisk();
    EXPECT_EQ(request(), Verdict::Ask);
    closing.giveUpChange();
    EXPECT_EQ(request(), Verdict::Close);
    EXPECT_TRUE(store->hasUnsavedChange());
}

} // namespace
} // namespace veltrix
