// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/file_dialogs.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(FileDialogs, AFileLargerThan16MegabytesIsRefusedBeforeItIsRead)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("keywords.csv"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(FileExchange::largestOpened));
    int reads = 0;
    FileDialogs dialogs(
        [&reads](const QString &) {
            ++reads;
            return QByteArray("film");
        },
        {});
    EXPECT_EQ(dialogs.read(path).content, QByteArray("film"));
    ASSERT_TRUE(file.resize(FileExchange::largestOpened + 1));
    const FileExchange::OpenedFile refused = dialogs.read(path);
    EXPECT_EQ(refused.name, QStringLiteral("keywords.csv"));
    EXPECT_EQ(refused.error, QStringLiteral("The file is larger than 16 MB."));
    EXPECT_EQ(reads, 1);
}

} // namespace
} // namespace veltrix
