// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/early_state_read.h"

#include "effects/atomic_file.h"
#include "json/json_writer.h"
#include "numbered_state.h"
#include "store/scratch_folder.h"
#include "store/state_file.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class EarlyStateReadTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return m_folder->filePath(QStringLiteral("state.json")); }
    [[nodiscard]] FileIdentity identity() const
    {
        return std::get<FileIdentity>(lookAtFile(path()));
    }
    void write(std::int64_t number) const
    {
        writeFileAtomically(path(), toJson(numberedState(number)));
    }
    [[nodiscard]] QString nameIn(const PersistedState &state) const
    {
        return state.apps.isEmpty() ? QString() : state.apps.first().appName;
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder = scratchFolder();
};

TEST_F(EarlyStateReadTest, GivesTheStateOnceIfItsContentStillLiesThere)
{
    write(3);
    EarlyStateRead early(path());
    const auto state = early.take(identity());
    ASSERT_TRUE(state);
    EXPECT_EQ(toJson(*state), toJson(numberedState(3)));
    EXPECT_FALSE(early.take(identity()));
}

TEST_F(EarlyStateReadTest, ADifferentContentIsNotWhatWasRead)
{
    write(3);
    FileIdentity other = identity();
    other.modifiedNanoseconds += 1;
    EarlyStateRead early(path());
    EXPECT_FALSE(early.take(other));
}

TEST_F(EarlyStateReadTest, AStartTakesWhatWasRead)
{
    write(3);
    EarlyStateRead early(path());
    StateFile file(path());
    EXPECT_EQ(toJson(file.load(&early)), toJson(numberedState(3)));
    EXPECT_EQ(file.size(), identity().size);
    EXPECT_FALSE(early.take(identity())) << "it was taken";
}

TEST_F(EarlyStateReadTest, AFileThatWasReplacedMeanwhileIsReadAgain)
{
    write(3);
    EarlyStateRead early(path());
    write(4);
    StateFile file(path());
    EXPECT_EQ(nameIn(file.load(&early)), QStringLiteral("State 4"));
    EXPECT_EQ(file.problem(), std::nullopt);
}

TEST_F(EarlyStateReadTest, AMissingFileIsAnEmptyStateAsEver)
{
    EarlyStateRead early(path());
    StateFile file(path());
    EXPECT_EQ(nameIn(file.load(&early)), QString());
    EXPECT_TRUE(file.isRead());
    EXPECT_EQ(file.problem(), std::nullopt);
}

TEST_F(EarlyStateReadTest, ADamagedFileIsToldAsEver)
{
    writeFileAtomically(path(), "{\"apps\":");
    EarlyStateRead early(path());
    testing::internal::CaptureStdout();
    StateFile file(path());
    (void)file.load(&early);
    const std::string withIt = testing::internal::GetCapturedStdout();
    testing::internal::CaptureStdout();
    StateFile again(path());
    (void)again.load();
    EXPECT_EQ(withIt, testing::internal::GetCapturedStdout());
    EXPECT_NE(withIt, "");
    EXPECT_EQ(file.problem(), again.problem());
}

} // namespace
} // namespace veltrix
