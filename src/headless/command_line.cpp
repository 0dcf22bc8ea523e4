// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/command_line.h"

#include <QCommandLineParser>

#include <algorithm>

namespace veltrix
{

namespace
{

const QString measureOption = QStringLiteral("measure");
const QString appOption = QStringLiteral("app");
const QString storefrontOption = QStringLiteral("storefront");
const QString allOption = QStringLiteral("all");
const QString jsonOption = QStringLiteral("json");
const QString helpOption = QStringLiteral("help");
const QString versionOption = QStringLiteral("version");

QString helpText()
{
    return QStringLiteral(
        "Usage: veltrix\n"
        "       veltrix --measure [--app APP]... [--storefront CODE]... [--all] [--json]\n"
        "\n"
        "Without options Veltrix opens its window.\n"
        "\n"
        "  --measure          Measure the keywords that have no measurement today (UTC), without "
        "a\n"
        "                     window. When the window is open, it measures them.\n"
        "  --app APP          Only keywords of this app: its name, or its App Store id.\n"
        "  --storefront CODE  Only keywords of this storefront, by its two-letter code.\n"
        "  --all              Measure again what was measured today.\n"
        "  --json             Print JSON objects, one a line.\n"
        "  --help             Print this.\n"
        "  --version          Print the version.\n"
        "\n"
        "--app and --storefront may be given several times.\n"
        "\n"
        "Exit status: 0 all were measured, 1 some were not, 2 wrong use, 3 another Veltrix has "
        "the\n"
        "data and does not answer.\n");
}

void describe(QCommandLineParser &parser)
{
    parser.addOptions({
        {measureOption, QString()},
        {appOption, QString(), QStringLiteral("APP")},
        {storefrontOption, QString(), QStringLiteral("CODE")},
        {allOption, QString()},
        {jsonOption, QString()},
        {{QStringLiteral("h"), helpOption}, QString()},
        {versionOption, QString()},
    });
}

/// Whether an argument is one of ours, as "--app", "--app=3" or "-h".
bool isOurs(const QString &argument)
{
    if (argument == QStringLiteral("-h"))
        return true;
    if (!argument.startsWith(QStringLiteral("--")))
        return false;
    static const QStringList ours{measureOption, appOption,  storefrontOption, allOption,
                                  jsonOption,    helpOption, versionOption};
    return ours.contains(argument.mid(2).section(u'=', 0, 0));
}

std::optional<QString> wrongIn(const QCommandLineParser &parser)
{
    if (!parser.positionalArguments().isEmpty()) {
        return QStringLiteral("“%1” is not an option.")
            .arg(parser.positionalArguments().constFirst());
    }
    if (parser.isSet(measureOption))
        return std::nullopt;
    for (const QString &option : {appOption, storefrontOption, allOption, jsonOption}) {
        if (parser.isSet(option))
            return QStringLiteral("--%1 goes with --measure.").arg(option);
    }
    return std::nullopt;
}

} // namespace

bool hasCommand(const QStringList &arguments)
{
    return std::any_of(arguments.begin() + 1, arguments.end(), isOurs);
}

Command commandOf(const QStringList &arguments, const QString &version)
{
    QCommandLineParser parser;
    describe(parser);
    if (!parser.parse(arguments))
        return WrongUse{parser.errorText()};
    if (parser.isSet(helpOption))
        return PrintText{helpText()};
    if (parser.isSet(versionOption))
        return PrintText{QStringLiteral("Veltrix %1\n").arg(version)};
    if (const auto wrong = wrongIn(parser))
        return WrongUse{*wrong};
    return MeasureCommand{{parser.values(appOption), parser.values(storefrontOption)},
                          parser.isSet(allOption),
                          parser.isSet(jsonOption)};
}

} // namespace veltrix
