// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/command_line.h"

#include "support/json_printers.h"

#include "effects/atomic_file.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

QStringList split(const char *line)
{
    return QString::fromUtf8(line).split(u' ');
}

Command command(const char *line)
{
    return commandOf(split(line), QStringLiteral("1.2"));
}

std::string wrong(const char *line)
{
    const Command made = command(line);
    const auto *use = std::get_if<WrongUse>(&made);
    return use ? use->message.toStdString() : "no wrong use";
}

TEST(CommandLine, OpensTheWindowWithoutACommand)
{
    for (const char *line :
         {"veltrix", "veltrix -platform offscreen", "veltrix --platform offscreen",
          "veltrix --style=fusion", "veltrix photo.csv", "veltrix --", "veltrix -geometry 800x600",
          "veltrix --overview -platform offscreen"})
        EXPECT_FALSE(hasCommand(split(line))) << line;
    EXPECT_TRUE(wantsOverview(split("veltrix -platform offscreen --overview")));
    EXPECT_FALSE(wantsOverview(split("veltrix -platform offscreen")));
    for (const char *line : {"veltrix --measure", "veltrix -h", "veltrix --help", "veltrix --app=3",
                             "veltrix x --json", "veltrix --version"})
        EXPECT_TRUE(hasCommand(split(line))) << line;
}

TEST(CommandLine, TellsAMistypedCommandInsteadOfOpeningTheWindow)
{
    for (const char *line : {"veltrix --exprot csv", "veltrix --measured", "veltrix --overviews",
                             "veltrix --overview --mesure", "veltrix --no-such=1"})
        EXPECT_TRUE(hasCommand(split(line))) << line;
    EXPECT_EQ(wrong("veltrix --exprot csv"), "Unknown option 'exprot'.");
}

TEST(CommandLine, MeasuresWhatIsChosen)
{
    EXPECT_TRUE(command("veltrix --measure") == Command(MeasureCommand{}));
    MeasureCommand chosen;
    chosen.choice.apps = {QStringLiteral("Lumen"), QStringLiteral("12")};
    chosen.choice.storefronts = {QStringLiteral("us")};
    chosen.all = true;
    chosen.json = true;
    chosen.notify = true;
    EXPECT_EQ(
        command("veltrix --measure --app Lumen --json --app=12 --storefront us --all --notify"),
        Command(chosen));
}

TEST(CommandLine, SaysWhatIsWrong)
{
    EXPECT_EQ(wrong("veltrix --json"), "--json goes with --measure.");
    EXPECT_EQ(wrong("veltrix --app 3"), "--app goes with --measure or --export.");
    EXPECT_EQ(wrong("veltrix --measure --overview"),
              "--overview opens the window, for which there is no command.");
    EXPECT_EQ(wrong("veltrix --measure now"), "“now” is not an option.");
    EXPECT_EQ(wrong("veltrix --measure --fast"), "Unknown option 'fast'.");
    EXPECT_EQ(wrong("veltrix --measure --app"), "Missing value after '--app'.");
    EXPECT_EQ(wrong("veltrix --measure --all=yes"), "Unexpected value after '--all'.");
}

TEST(CommandLine, ExportsWhatIsChosen)
{
    EXPECT_TRUE(hasCommand(split("veltrix --export=csv")));
    EXPECT_EQ(command("veltrix --export csv"), Command(ExportCommand{}));
    ExportCommand chosen;
    chosen.choice.apps = {QStringLiteral("Lumen")};
    chosen.choice.storefronts = {QStringLiteral("us"), QStringLiteral("de")};
    chosen.form = ExportCommand::Form::Json;
    chosen.history = true;
    chosen.output = QStringLiteral("ranks.json");
    EXPECT_EQ(command("veltrix --export json --history --output ranks.json --app Lumen "
                      "--storefront us --storefront de"),
              Command(chosen));
}

TEST(CommandLine, SaysWhatIsWrongWithAnExport)
{
    EXPECT_EQ(wrong("veltrix --export"), "Missing value after '--export'.");
    for (const char *line : {"veltrix --export xml", "veltrix --export csv --export json"})
        EXPECT_EQ(wrong(line), "--export is for one of “csv” and “json”.") << line;
    EXPECT_EQ(wrong("veltrix --history"), "--history goes with --export.");
    EXPECT_EQ(wrong("veltrix --measure --output x.csv"), "--output goes with --export.");
    EXPECT_EQ(wrong("veltrix --export csv --measure"), "--measure does not go with --export.");
    EXPECT_EQ(wrong("veltrix --export csv --json"), "--json goes with --measure.");
    for (const char *line : {"veltrix --export csv --output=", "veltrix --export csv --output=a "
                                                               "--output=b"})
        EXPECT_EQ(wrong(line), "--output is for the name of one file.") << line;
}

TEST(CommandLine, HelpNamesEveryOptionAndStatus)
{
    const Command help = command("veltrix --help --measure");
    const auto *print = std::get_if<PrintText>(&help);
    ASSERT_TRUE(print);
    for (const char *word :
         {"--measure", "--export csv|json", "--app", "--storefront", "--all", "--json", "--help",
          "--version", "0  all", "1  some", "2  wrong", "3  another"})
        EXPECT_TRUE(print->text.contains(QString::fromUtf8(word))) << word;
    for (const QString &line : print->text.split(u'\n'))
        EXPECT_LE(line.size(), 80) << line.toStdString();
    EXPECT_EQ(command("veltrix --version"), Command(PrintText{QStringLiteral("Veltrix 1.2\n")}));
}

/// "--app", "--json" … in a text.
QStringList optionsIn(const QString &text)
{
    static const QRegularExpression option(QStringLiteral("--[a-z]+"));
    QSet<QString> found;
    for (auto match = option.globalMatch(text); match.hasNext();)
        found.insert(match.next().captured());
    QStringList sorted(found.begin(), found.end());
    sorted.sort();
    return sorted;
}

TEST(CommandLine, HelpAndManualHaveTheSameOptionsAndStatuses)
{
    QString manual = QString::fromUtf8(readWholeFile(QStringLiteral(VELTRIX_MANUAL)));
    manual.remove(u'\\'); // Every dash of an option is escaped.
    const Command help = command("veltrix --help");
    const QString text = std::get<PrintText>(help).text;
    EXPECT_EQ(optionsIn(manual), optionsIn(text));
    for (const int status : {0, 1, 2, 3}) {
        EXPECT_TRUE(manual.contains(QStringLiteral("\n.B %1\n").arg(status))) << status;
        EXPECT_TRUE(text.contains(QStringLiteral("\n  %1  ").arg(status))) << status;
    }
}

TEST(CommandLine, ManualIsUnderstoodByTheFormatter)
{
    const QString formatter = QStandardPaths::findExecutable(QStringLiteral("groff"));
    if (formatter.isEmpty())
        GTEST_SKIP() << "groff is not installed";
    QProcess process;
    process.start(formatter,
                  {QStringLiteral("-man"), QStringLiteral("-Tutf8"), QStringLiteral("-ww"),
                   QStringLiteral("-z"), QStringLiteral(VELTRIX_MANUAL)});
    process.waitForFinished();
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardError(), "");
}

} // namespace
} // namespace veltrix
