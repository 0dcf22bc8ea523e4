// SPDX-License-Identifier: GPL-3.0-or-later
// Every file call of a start and of a save fails once, and from then on, with every error that
// disks have: nothing is lost, nothing fails in silence, and when the fault is gone all is saved.
#include "store/helper_process.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class FileFaults : public testing::Test
{
protected:
    /// Runs a scene under all faults; `calls` must be among those that have failed.
    static void expectHarmless(const char *scene, int fewestTrials, const QStringList &calls)
    {
        QProcess helper;
        helper.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        helper.start(QStringLiteral(VELTRIX_FILE_FAULTS_HELPER), {QString::fromLatin1(scene)});
        ASSERT_TRUE(helper.waitForFinished(600'000));
        EXPECT_EQ(helper.exitStatus(), QProcess::NormalExit);
        QStringList lines =
            QString::fromUtf8(helper.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        ASSERT_GE(lines.size(), 2);
        const QStringList failed = lines.takeLast().split(u' ');
        const int trials = lines.takeLast().section(u' ', 1).toInt();
        EXPECT_TRUE(lines.isEmpty()) << qPrintable(lines.join(u'\n'));
        EXPECT_GE(trials, fewestTrials);
        for (const QString &call : calls)
            EXPECT_TRUE(failed.contains(call)) << qPrintable(call);
    }

    static inline const QStringList saving{QStringLiteral("open"),   QStringLiteral("write"),
                                           QStringLiteral("fsync"),  QStringLiteral("fstat"),
                                           QStringLiteral("close"),  QStringLiteral("stat"),
                                           QStringLiteral("rename"), QStringLiteral("flock")};
};

TEST_F(FileFaults, OfAStartAndASaveLoseNothing)
{
    expectHarmless("start-and-save", 1000, saving + QStringList{QStringLiteral("pread")});
}

TEST_F(FileFaults, OfAFirstStartLoseNothing)
{
    expectHarmless("first-start", 1000, saving);
}

TEST_F(FileFaults, OnADamagedFileLoseNothing)
{
    expectHarmless("damaged", 1000, saving + QStringList{QStringLiteral("link")});
}

TEST_F(FileFaults, OnAFileThatWasRestoredMeanwhileLoseNothing)
{
    expectHarmless("foreign", 500, {QStringLiteral("link"), QStringLiteral("rename")});
}

TEST_F(FileFaults, WhenTheUserBeginsAnewLoseNothing)
{
    expectHarmless("begin-anew", 1000, {QStringLiteral("link"), QStringLiteral("rename")});
}

TEST_F(FileFaults, OnAFileThatIsALinkLoseNothing)
{
    expectHarmless("linked", 1000, saving + QStringList{QStringLiteral("readlink")});
}

TEST_F(FileFaults, WhileDaysMoveToTheHistoryLoseNothing)
{
    expectHarmless("moving", 500,
                   saving + QStringList{QStringLiteral("pwrite64"), QStringLiteral("fdatasync"),
                                        QStringLiteral("unlink"), QStringLiteral("open64")});
}

TEST_F(FileFaults, WhenTheLockWasRemovedLoseNothing)
{
    expectHarmless("removed-lock", 1000, saving);
}

} // namespace
} // namespace veltrix
