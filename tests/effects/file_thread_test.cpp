// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/file_thread.h"

#include "model/error.h"
#include "support/task_outcome.h"

#include <gtest/gtest.h>

#include <semaphore>

namespace veltrix
{
namespace
{

using Number = std::function<int()>;

class FileThreadTest : public testing::Test
{
protected:
    /// Keeps the thread busy until the gate is opened.
    void close()
    {
        m_files->start([this] {
            m_begun.release();
            m_gate.acquire();
        });
        m_begun.acquire();
    }
    void open() { m_gate.release(); }
    void note(const char *what) { m_done.append(QString::fromLatin1(what)); }

    std::binary_semaphore m_begun{0};
    std::binary_semaphore m_gate{0};
    /// The thread's until it has finished.
    QStringList m_done;
    std::unique_ptr<FileThread> m_files = std::make_unique<FileThread>();
};

TEST_F(FileThreadTest, WorkRunsOnAnotherThreadAndItsResultComesToThisOne)
{
    const auto here = std::this_thread::get_id();
    std::thread::id there;
    Number work = [&there] {
        there = std::this_thread::get_id();
        return 7;
    };
    Outcome outcome(m_files->run(work, {}));
    EXPECT_FALSE(outcome.isDone());
    EXPECT_EQ(outcome.wait().value(), 7);
    EXPECT_NE(there, here);
    EXPECT_NE(there, std::thread::id());
}

TEST_F(FileThreadTest, WhatWorkThrowsComesToo)
{
    Number work = []() -> int {
        throw Error(QStringLiteral("The disk is full."));
    };
    EXPECT_EQ(Outcome(m_files->run(work, {})).wait().failureText(),
              QStringLiteral("The disk is full."));
}

TEST_F(FileThreadTest, WhatSomebodyWaitsForGoesBeforeWritesAndInItsOrder)
{
    close();
    m_files->save(QStringLiteral("file"), [this] { note("saved"); });
    m_files->start([this] { note("first"); });
    m_files->start([this] { note("second"); });
    open();
    m_files->waitUntilFinished();
    EXPECT_EQ(m_done.join(u' '), QStringLiteral("first second saved"));
}

TEST_F(FileThreadTest, ANewerVersionTakesThePlaceOfTheOneThatWaits)
{
    close();
    m_files->save(QStringLiteral("a"), [this] { note("a1"); });
    m_files->save(QStringLiteral("b"), [this] { note("b1"); });
    m_files->save(QStringLiteral("a"), [this] { note("a2"); });
    open();
    m_files->waitUntilFinished();
    EXPECT_EQ(m_done.join(u' '), QStringLiteral("a2 b1"));
}

TEST_F(FileThreadTest, ItsEndWaitsUntilAllIsDone)
{
    close();
    m_files->save(QStringLiteral("a"), [this] { note("saved"); });
    m_files->start([this] { note("started"); });
    open();
    m_files.reset();
    EXPECT_EQ(m_done.join(u' '), QStringLiteral("started saved"));
}

TEST_F(FileThreadTest, WhoeverStillWaitsAtItsEndGetsCancelled)
{
    close();
    Number work = [] {
        return 1;
    };
    const Outcome outcome(m_files->run(work, {}));
    open();
    m_files.reset();
    EXPECT_TRUE(outcome.isCancelled());
}

TEST_F(FileThreadTest, WorkThatNobodyWaitsForAnyMoreIsLeftOut)
{
    close();
    Number work = [this] {
        note("done");
        return 1;
    };
    std::stop_source stop;
    const Outcome outcome(m_files->run(work, stop.get_token()));
    stop.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
    open();
    m_files->waitUntilFinished();
    EXPECT_TRUE(m_done.isEmpty());
}

} // namespace
} // namespace veltrix
