// SPDX-License-Identifier: GPL-3.0-or-later
// A process that is killed while it saves leaves the state before or after that save, never half.
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "store/killed_process.h"
#include "store/numbered_state.h"
#include "store/scratch_folder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <random>

namespace veltrix
{
namespace
{

TEST(Crash, AThousandKillsAtRandomMomentsLeaveAWholeState)
{
    constexpr int kills = 1000;
    const auto folder = scratchFolder();
    const QString statePath = folder->filePath(QStringLiteral("state.json"));
    KilledProcess<SaveProgress> process(*folder, "save-for-ever");
    std::mt19937 random(1);
    std::uniform_int_distribution<int> delay(0, 4000);
    int interrupted = 0;
    int before = 0;
    int after = 0;
    for (int i = 0; i < kills; ++i) {
        ASSERT_TRUE(process.runAndKill(std::chrono::microseconds(delay(random))));
        if (!QDir(folder->path())
                 .entryList({QStringLiteral(".*.tmp")}, QDir::Files | QDir::Hidden)
                 .isEmpty())
            ++interrupted;
        const std::int64_t begun = process.progress().begun;
        // On a busy machine the first kills come before the first save.
        if (process.progress().done == 0 && !QFileInfo::exists(statePath))
            continue;
        const QByteArray bytes = readWholeFile(statePath);
        const PersistedState state = fromJson<PersistedState>(bytes);
        ASSERT_EQ(state.apps.size(), 1);
        const std::int64_t number = state.apps[0].trackId;
        ASSERT_GE(number, process.progress().done) << "a finished save is lost";
        ASSERT_TRUE(number == begun - 1 || number == begun)
            << number << " in the save of " << begun;
        ASSERT_EQ(toJson(numberedState(number)), bytes);
        before += number == begun - 1 ? 1 : 0;
        after += number == begun ? 1 : 0;
    }
    // Else the kills would have missed what they are there to hit.
    EXPECT_GT(interrupted, kills / 20);
    EXPECT_GT(before, kills / 20);
    EXPECT_GT(after, kills / 20);
    RecordProperty("killed while the temporary file existed", interrupted);
    RecordProperty("old state found", before);
    RecordProperty("new state found", after);
}

} // namespace
} // namespace veltrix
