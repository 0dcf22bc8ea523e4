// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/measure_output.h"

#include "json/json_reader.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using Form = MeasureOutput::Form;

class Output : public testing::Test
{
protected:
    ~Output() override
    {
        std::fclose(out);
        std::fclose(error);
    }
    MeasureOutput output(Form form, bool showsProgress = false)
    {
        return {form, {out, error, showsProgress}};
    }
    static QString read(std::FILE *file)
    {
        std::fflush(file);
        std::rewind(file);
        QByteArray bytes(4096, '\0');
        bytes.truncate(qsizetype(std::fread(bytes.data(), 1, size_t(bytes.size()), file)));
        return QString::fromUtf8(bytes);
    }
    static MeasureMessage keyword()
    {
        MeasuredKeyword turn;
        turn.keyword = QStringLiteral("moon");
        turn.storefront = QStringLiteral("US");
        turn.isMeasured = true;
        turn.rank = 3;
        return MeasureMessage(turn);
    }
    static MeasureMessage progress()
    {
        return MeasureMessage(MeasureProgress{QStringLiteral("moon"), 1, 2});
    }

    static MeasureMessage end(int measured, int left)
    {
        MeasureSummary summary;
        summary.measured = measured;
        summary.left = left;
        return MeasureMessage(summary);
    }

    std::FILE *out = std::tmpfile();
    std::FILE *error = std::tmpfile();
};

TEST_F(Output, IsALineAKeywordAndOneForTheSum)
{
    MeasureOutput printed = output(Form::Text);
    printed.print(progress());
    printed.print(keyword());
    EXPECT_EQ(printed.status(), std::nullopt);
    printed.print(end(1, 0));
    EXPECT_EQ(read(out), QStringLiteral("moon · US: rank 3\n1 keyword measured.\n"));
    EXPECT_EQ(read(error), QString());
    EXPECT_EQ(printed.status(), ExitStatus::Done);
}

TEST_F(Output, ShowsProgressOnATerminalAndClearsItBeforeALine)
{
    MeasureOutput printed = output(Form::Text, true);
    printed.print(progress());
    printed.print(keyword());
    printed.print(keyword());
    EXPECT_EQ(read(error), QStringLiteral("\r\x1b[K[1/2] moon\r\x1b[K"));
}

TEST_F(Output, IsJsonThatReadsBack)
{
    MeasureOutput printed = output(Form::Json);
    const MeasureMessage summary = end(1, 2);
    printed.print(keyword());
    printed.print(summary);
    const QStringList lines = read(out).split(u'\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(fromJson<MeasureMessage>(lines[0].toUtf8()), keyword());
    EXPECT_EQ(fromJson<MeasureMessage>(lines[1].toUtf8()), summary);
    EXPECT_EQ(printed.status(), ExitStatus::Incomplete);
}

TEST_F(Output, WrongUseGoesToStandardError)
{
    MeasureOutput printed = output(Form::Json);
    printed.print(MeasureMessage::ofWrongUse(QStringLiteral("No app is tracked.")));
    EXPECT_EQ(read(out), QString());
    EXPECT_EQ(read(error), QStringLiteral("veltrix: No app is tracked.\n"));
    EXPECT_EQ(printed.status(), ExitStatus::WrongUse);
}

TEST(MeasureStatus, IsDoneOnlyWhenNothingIsMissing)
{
    MeasureSummary summary;
    summary.measured = 3;
    summary.measuredBefore = 2;
    EXPECT_TRUE(summary.isComplete());
    for (auto missing : {&MeasureSummary::notMeasured, &MeasureSummary::left}) {
        MeasureSummary incomplete = summary;
        incomplete.*missing = 1;
        EXPECT_FALSE(incomplete.isComplete());
    }
    summary.problem = QStringLiteral("No disk.");
    EXPECT_FALSE(summary.isComplete());
}

} // namespace
} // namespace veltrix
