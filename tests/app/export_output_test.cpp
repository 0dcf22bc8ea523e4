// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/export_output.h"

#include "app/folder_run.h"
#include "support/json_printers.h"
#include "ui/dashboard/keyword_export.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class Output : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("ranks.csv")); }
    [[nodiscard]] QStringList files() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
    }

    QTemporaryDir m_folder;
};

TEST_F(Output, IsAFileOnlyWhenItIsWhole)
{
    writeFileAtomically(path(), "before");
    {
        ExportOutput output({path(), "mark:", stdout, m_folder.path()});
        output.begin();
        EXPECT_EQ(files().size(), 1) << "nothing that a signal could leave";
        output.add("half");
        EXPECT_EQ(readWholeFile(path()), "before");
    }
    EXPECT_EQ(readWholeFile(path()), "before");
    EXPECT_EQ(files(), QStringList{QStringLiteral("ranks.csv")});
}

TEST_F(Output, BegunAgainHasNothingOfTheFirstAttempt)
{
    ExportOutput output({path(), "mark:", stdout, m_folder.path()});
    output.begin();
    output.add("half");
    output.begin();
    output.add("who");
    output.add("le");
    output.finish();
    EXPECT_EQ(readWholeFile(path()), "mark:whole");
    EXPECT_EQ(files(), QStringList{QStringLiteral("ranks.csv")});
}

TEST_F(Output, ForStandardOutputComesAtTheEndAndWithoutTheMark)
{
    const QString scratch = m_folder.filePath(QStringLiteral("cache/folder"));
    std::FILE *const out = std::tmpfile();
    ASSERT_TRUE(out);
    ExportOutput output({std::nullopt, "mark:", out, scratch});
    output.begin();
    output.add("half");
    output.begin();
    const QByteArray large(300'000, 'x');
    output.add(large);
    std::fseek(out, 0, SEEK_END);
    EXPECT_EQ(std::ftell(out), 0);
    output.finish();
    std::fseek(out, 0, SEEK_END);
    EXPECT_EQ(std::ftell(out), large.size());
    std::fclose(out);
    EXPECT_EQ(QDir(scratch).entryList(QDir::Files), QStringList());
}

TEST_F(Output, ThatCannotBeWrittenSaysWhere)
{
    ExportOutput output({m_folder.filePath(QStringLiteral("none/ranks.csv")), {}, stdout, {}});
    try {
        output.begin();
        output.add("text");
        ADD_FAILURE() << "it was written";
    } catch (const FileError &error) {
        EXPECT_TRUE(error.description().contains(QStringLiteral("none/ranks.csv")));
    }
    std::FILE *const full = std::fopen("/dev/full", "w");
    ASSERT_TRUE(full);
    ExportOutput toFull({std::nullopt, {}, full, m_folder.path()});
    toFull.begin();
    toFull.add("text");
    EXPECT_THROW(toFull.finish(), FileError);
    std::fclose(full);
}

TEST_F(Output, HasTheTablesOfTheWindow)
{
    const ExportTables tables = windowTables();
    EXPECT_EQ(tables.toCsv({{QStringLiteral("=1"), QStringLiteral("a,b")}}), "'=1,\"a,b\"\r\n");
}

} // namespace
} // namespace veltrix
