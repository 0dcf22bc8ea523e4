// SPDX-License-Identifier: GPL-3.0-or-later
// A process that is killed at a random moment, and the memory shared with it.
#pragma once

#include "store/helper_process.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace veltrix
{

/// Runs the store's test helper again and again on one folder. `Progress` has a `begun` that grows
/// from process to process.
template <class Progress>
class KilledProcess
{
public:
    KilledProcess(const QTemporaryDir &folder, const char *mode)
        : m_mode(mode), m_statePath(folder.filePath(QStringLiteral("state.json")).toUtf8()),
          m_progressPath(folder.filePath(QStringLiteral("progress")).toUtf8())
    {
        const int descriptor = ::open(m_progressPath.constData(), O_RDWR | O_CREAT, 0600);
        EXPECT_EQ(::ftruncate(descriptor, sizeof(Progress)), 0);
        m_memory =
            ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
        EXPECT_NE(m_memory, MAP_FAILED);
        ::close(descriptor);
    }
    ~KilledProcess() { ::munmap(m_memory, sizeof(Progress)); }
    KilledProcess(const KilledProcess &) = delete;
    KilledProcess &operator=(const KilledProcess &) = delete;

    /// Runs the process until it begins, and then that much longer. False when it ended by itself.
    bool runAndKill(std::chrono::microseconds delay)
    {
        const std::int64_t before = progress().begun;
        QByteArray helper = helperPath().toUtf8();
        char *arguments[] = {helper.data(), m_mode.data(), m_statePath.data(),
                             m_progressPath.data(), nullptr};
        pid_t child = 0;
        EXPECT_EQ(::posix_spawn(&child, helper.constData(), nullptr, nullptr, arguments, environ),
                  0);
        for (int i = 0; i < 200'000 && progress().begun == before; ++i)
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        std::this_thread::sleep_for(delay);
        ::kill(child, SIGKILL);
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        return WIFSIGNALED(status);
    }

    [[nodiscard]] Progress &progress() { return *static_cast<Progress *>(m_memory); }

private:
    QByteArray m_mode;
    QByteArray m_statePath;
    QByteArray m_progressPath;
    void *m_memory = nullptr;
};

} // namespace veltrix
