// SPDX-License-Identifier: GPL-3.0-or-later
// A process that is killed while it saves leaves the state before or after that save, never half.
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "store/helper_process.h"
#include "store/numbered_state.h"
#include "store/scratch_folder.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <random>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace veltrix
{
namespace
{

/// The saving process and the memory shared with it.
class SavingProcess
{
public:
    explicit SavingProcess(const QTemporaryDir &folder)
        : m_statePath(folder.filePath(QStringLiteral("state.json")).toUtf8()),
          m_progressPath(folder.filePath(QStringLiteral("progress")).toUtf8())
    {
        const int descriptor = ::open(m_progressPath.constData(), O_RDWR | O_CREAT, 0600);
        EXPECT_EQ(::ftruncate(descriptor, sizeof(SaveProgress)), 0);
        m_memory = ::mmap(nullptr, sizeof(SaveProgress), PROT_READ | PROT_WRITE, MAP_SHARED,
                          descriptor, 0);
        EXPECT_NE(m_memory, MAP_FAILED);
        ::close(descriptor);
    }
    ~SavingProcess() { ::munmap(m_memory, sizeof(SaveProgress)); }
    SavingProcess(const SavingProcess &) = delete;
    SavingProcess &operator=(const SavingProcess &) = delete;

    /// Runs the process until it saves, and then that much longer.
    void runAndKill(std::chrono::microseconds delay)
    {
        const std::int64_t before = progress().begun;
        QByteArray helper = helperPath().toUtf8();
        QByteArray mode = "save-for-ever";
        char *arguments[] = {helper.data(), mode.data(), m_statePath.data(), m_progressPath.data(),
                             nullptr};
        pid_t child = 0;
        ASSERT_EQ(::posix_spawn(&child, helper.constData(), nullptr, nullptr, arguments, environ),
                  0);
        // Both numbers grow from process to process, so a change means that this one has begun.
        for (int i = 0; i < 200'000 && progress().begun == before; ++i)
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        std::this_thread::sleep_for(delay);
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "it ended by itself";
    }

    [[nodiscard]] SaveProgress &progress() { return *static_cast<SaveProgress *>(m_memory); }

private:
    QByteArray m_statePath;
    QByteArray m_progressPath;
    void *m_memory = nullptr;
};

TEST(Crash, AThousandKillsAtRandomMomentsLeaveAWholeState)
{
    constexpr int kills = 1000;
    const auto folder = scratchFolder();
    const QString statePath = folder->filePath(QStringLiteral("state.json"));
    SavingProcess process(*folder);
    std::mt19937 random(1);
    std::uniform_int_distribution<int> delay(0, 4000);
    int interrupted = 0;
    int before = 0;
    int after = 0;
    for (int i = 0; i < kills; ++i) {
        ASSERT_NO_FATAL_FAILURE(process.runAndKill(std::chrono::microseconds(delay(random))));
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
