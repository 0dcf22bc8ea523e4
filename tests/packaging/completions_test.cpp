// SPDX-License-Identifier: GPL-3.0-or-later
// The shells complete the options that the program has.
#include "headless/command_line.h"

#include "effects/atomic_file.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QString folder = QStringLiteral(VELTRIX_COMPLETIONS "/");

/// The words of a text that look like options, sorted, each once.
QStringList optionsIn(const QString &text, const QString &pattern = QStringLiteral("--([a-z]+)"))
{
    QStringList found;
    QRegularExpressionMatchIterator matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext())
        found.append(matches.next().captured(1));
    found.removeDuplicates();
    found.sort();
    return found;
}

QStringList knownOptions()
{
    const Command help = commandOf({QStringLiteral("veltrix"), QStringLiteral("--help")}, {});
    return optionsIn(std::get<PrintText>(help).text);
}

QString completions(const char *file)
{
    return QString::fromUtf8(readWholeFile(folder + QLatin1String(file)));
}

/// What bash offers for the last of the words, which is where the cursor is.
std::string offeredByBash(const QStringList &words)
{
    QProcess bash;
    bash.setWorkingDirectory(folder);
    bash.start(QStringLiteral("bash"),
               QStringList{QStringLiteral("--norc"), QStringLiteral("-c"),
                           QStringLiteral("source ./veltrix.bash; COMP_WORDS=(\"$@\"); "
                                          "COMP_CWORD=$(($# - 1)); _veltrix; "
                                          "echo -n \"${COMPREPLY[*]}\""),
                           QStringLiteral("bash")} +
                   words);
    bash.waitForFinished();
    EXPECT_EQ(bash.readAllStandardError(), "");
    return bash.readAllStandardOutput().toStdString();
}

std::string offeredByBash(const char *line)
{
    return offeredByBash(QString::fromUtf8(line).split(u' '));
}

TEST(Completions, OfEachShellHaveTheOptionsOfTheHelp)
{
    ASSERT_GT(knownOptions().size(), 10);
    EXPECT_EQ(optionsIn(completions("veltrix.bash")), knownOptions());
    EXPECT_EQ(optionsIn(completions("_veltrix")), knownOptions());
    EXPECT_EQ(optionsIn(completions("veltrix.fish"), QStringLiteral("complete .* -l ([a-z]+)")),
              knownOptions());
}

TEST(Completions, OfBashOfferWhatGoesWithTheCommand)
{
    EXPECT_EQ(offeredByBash("veltrix --"), "--measure --export --overview --help --version");
    EXPECT_EQ(offeredByBash("veltrix --me"), "--measure");
    EXPECT_EQ(offeredByBash("veltrix --measure --"), "--app --storefront --all --json --notify");
    EXPECT_EQ(offeredByBash("veltrix --export csv --"), "--app --storefront --history --output");
    EXPECT_EQ(offeredByBash("veltrix --version --"), "");
}

TEST(Completions, OfBashOfferTheValuesOfAnOption)
{
    EXPECT_EQ(offeredByBash("veltrix --export "), "csv json");
    EXPECT_EQ(offeredByBash("veltrix --export j"), "json");
    // As bash takes "--export=" and "--export=c" apart.
    EXPECT_EQ(offeredByBash("veltrix --export ="), "csv json");
    EXPECT_EQ(offeredByBash("veltrix --export = c"), "csv");
    EXPECT_EQ(offeredByBash("veltrix --export csv --output _vel"), "_veltrix");
    EXPECT_EQ(offeredByBash("veltrix --measure --app "), "");
}

TEST(Completions, OfFishOfferWhatGoesWithTheCommand)
{
    if (QStandardPaths::findExecutable(QStringLiteral("fish")).isEmpty())
        GTEST_SKIP() << "fish is not installed";
    const auto offered = [](const char *line) {
        QProcess fish;
        fish.setWorkingDirectory(folder);
        fish.start(
            QStringLiteral("fish"),
            {QStringLiteral("--no-config"), QStringLiteral("-c"),
             QStringLiteral("source veltrix.fish; complete -C'%1'").arg(QString::fromUtf8(line))});
        fish.waitForFinished();
        EXPECT_EQ(fish.readAllStandardError(), "");
        QStringList words;
        for (const QByteArray &entry : fish.readAllStandardOutput().split('\n'))
            words.append(QString::fromUtf8(entry.left(entry.indexOf('\t'))));
        return words.join(u' ').trimmed().toStdString();
    };
    EXPECT_EQ(offered("veltrix --"), "--export --help --measure --overview --version");
    EXPECT_EQ(offered("veltrix --measure --"), "--all --app --json --notify --storefront");
    EXPECT_EQ(offered("veltrix --export "), "csv json");
    EXPECT_EQ(offered("veltrix --export csv --"), "--app --history --output --storefront");
}

TEST(Completions, OfZshAreUnderstoodByIt)
{
    if (QStandardPaths::findExecutable(QStringLiteral("zsh")).isEmpty())
        GTEST_SKIP() << "zsh is not installed";
    QProcess zsh;
    zsh.start(QStringLiteral("zsh"), {QStringLiteral("-n"), folder + QStringLiteral("_veltrix")});
    zsh.waitForFinished();
    EXPECT_EQ(zsh.exitCode(), 0);
    EXPECT_EQ(zsh.readAllStandardError(), "");
}

} // namespace
} // namespace veltrix
