// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are written on the thread for files: whole at the end, or not there.
#include "effects/background_file.h"

#include "effects/atomic_file.h"
#include "support/task_outcome.h"

#include <QDir>
#include <QTemporaryDir>

#include <future>
#include <thread>

namespace veltrix
{
namespace
{

class BackgroundFileTest : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("table.csv")); }
    [[nodiscard]] QStringList names() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
    }
    static void succeed(Task<void> task)
    {
        Outcome<Done> outcome(finished(std::move(task)));
        EXPECT_TRUE(outcome.wait().hasValue());
    }
    void waitForOtherThreads() { m_files->waitUntilFinished(); }

    QTemporaryDir m_folder;
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
};

FileOutput::Piece textPiece(const char *text)
{
    return [text] {
        return QByteArray(text);
    };
}

TEST_F(BackgroundFileTest, IsThereWithAllPiecesWhenItIsPlacedAndNotBefore)
{
    writeFileAtomically(path(), "old");
    BackgroundFile file(path(), m_files);
    Outcome<Done> first(finished(file.write(textPiece("one "), {})));
    EXPECT_FALSE(first.isDone()) << "nothing is waited for";
    EXPECT_TRUE(first.wait().hasValue());
    succeed(file.write(textPiece("two"), {}));
    EXPECT_EQ(readWholeFile(path()), "old");
    succeed(file.place({}));
    EXPECT_EQ(readWholeFile(path()), "one two");
    EXPECT_EQ(names(), QStringList{QStringLiteral("table.csv")});
}

TEST_F(BackgroundFileTest, MakesAndFreesItsPiecesOnAnotherThread)
{
    std::thread::id madeBy;
    std::thread::id freedBy;
    std::shared_ptr<int> held(new int, [&](const int *number) {
        freedBy = std::this_thread::get_id();
        delete number;
    });
    BackgroundFile file(path(), m_files);
    FileOutput::Piece piece = [&madeBy, held = std::move(held)] {
        madeBy = std::this_thread::get_id();
        return QByteArray("x");
    };
    succeed(file.write(std::move(piece), {}));
    EXPECT_NE(madeBy, std::this_thread::get_id());
    EXPECT_EQ(freedBy, madeBy);
}

TEST_F(BackgroundFileTest, OneThatGoesUnplacedLeavesNothing)
{
    auto file = std::make_unique<BackgroundFile>(path(), m_files);
    succeed(file->write(textPiece("half"), {}));
    EXPECT_EQ(names().size(), 1);
    file.reset();
    waitForOtherThreads();
    EXPECT_EQ(names(), QStringList());
}

TEST_F(BackgroundFileTest, OneThatGoesWhileAPieceIsMadeIsNotWaitedFor)
{
    std::promise<void> begun;
    std::promise<void> released;
    auto file = std::make_unique<BackgroundFile>(path(), m_files);
    const Outcome<Done> write(finished(file->write(
        [&] {
            begun.set_value();
            released.get_future().wait();
            return QByteArray("late");
        },
        {})));
    begun.get_future().wait();
    file.reset();
    EXPECT_TRUE(write.isCancelled());
    released.set_value();
    waitForOtherThreads();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(names(), QStringList());
}

TEST_F(BackgroundFileTest, OneThatIsStoppedIsNotPlaced)
{
    std::stop_source stop;
    BackgroundFile file(path(), m_files);
    succeed(file.write(textPiece("all"), stop.get_token()));
    stop.request_stop();
    const Outcome<Done> placed(finished(file.place(stop.get_token())));
    EXPECT_TRUE(placed.isCancelled());
    waitForOtherThreads();
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(BackgroundFileTest, WhatGoesWrongIsTheErrorOfThatStep)
{
    BackgroundFile file(m_folder.filePath(QStringLiteral("missing/table.csv")), m_files);
    Outcome<Done> write(finished(file.write(textPiece("x"), {})));
    EXPECT_EQ(write.wait().failureText(),
              QStringLiteral("The file “%1” could not be written: No such file or directory.")
                  .arg(m_folder.filePath(QStringLiteral("missing/table.csv"))));
    BackgroundFile other(path(), m_files);
    const auto failing = []() -> QByteArray {
        throw FileError(QStringLiteral("no piece"));
    };
    Outcome<Done> piece(finished(other.write(failing, {})));
    EXPECT_EQ(piece.wait().failureText(), QStringLiteral("no piece"));
}

} // namespace
} // namespace veltrix
