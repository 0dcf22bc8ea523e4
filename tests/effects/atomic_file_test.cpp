// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/atomic_file.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace veltrix
{
namespace
{

class AtomicFile : public testing::Test
{
protected:
    [[nodiscard]] QString path(const char *name) const
    {
        return m_folder.filePath(QString::fromUtf8(name));
    }
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_folder;
};

TEST_F(AtomicFile, ReplacesTheWholeFileAndLeavesNothingElse)
{
    const QString file = path("state.json");
    writeFileAtomically(file, "a much longer first content");
    writeFileAtomically(file, "second");
    EXPECT_EQ(readWholeFile(file), "second");
    EXPECT_EQ(entries(), QStringList{QStringLiteral("state.json")});
}

TEST_F(AtomicFile, AFolderThatIsMissingIsAnErrorThatNamesTheFile)
{
    try {
        writeFileAtomically(path("missing/state.json"), "x");
        FAIL() << "no error";
    } catch (const FileError &error) {
        EXPECT_TRUE(error.description().contains(QStringLiteral("missing/state.json")));
        EXPECT_TRUE(error.description().contains(QStringLiteral("No such file or directory")));
    }
}

TEST_F(AtomicFile, ATargetThatIsAFolderIsAnErrorAndLeavesNoTemporaryFile)
{
    QDir().mkpath(path("state.json"));
    EXPECT_THROW(writeFileAtomically(path("state.json"), "x"), FileError);
    EXPECT_EQ(entries(), QStringList{QStringLiteral("state.json")});
}

TEST_F(AtomicFile, AWriteThatHitsALimitKeepsTheOldFile)
{
    const QString file = path("state.json");
    writeFileAtomically(file, "old");
    // A file-size limit fails the write half-way, as a full disk does.
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 1000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    EXPECT_THROW(writeFileAtomically(file, QByteArray(5000, 'x')), FileError);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, previousHandler);
    EXPECT_EQ(readWholeFile(file), "old");
    EXPECT_EQ(entries(), QStringList{QStringLiteral("state.json")});
}

TEST_F(AtomicFile, ReadingAMissingFileIsAnError)
{
    EXPECT_THROW(readWholeFile(path("nothing.json")), FileError);
}

} // namespace
} // namespace veltrix
