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
const QString notifyOption = QStringLiteral("notify");
const QString exportOption = QStringLiteral("export");
const QString historyOption = QStringLiteral("history");
const QString outputOption = QStringLiteral("output");
const QString overviewOption = QStringLiteral("overview");
const QString helpOption = QStringLiteral("help");
const QString versionOption = QStringLiteral("version");

const QString csvForm = QStringLiteral("csv");
const QString jsonForm = QStringLiteral("json");

struct Option {
    QString name;
    /// Empty for one without a value.
    QString value;
    /// The commands that it goes with; empty for one that stands alone.
    QStringList commands;
    /// What it does, in lines as long as a terminal has room for.
    QStringList help;
};

/// All of them, as the help lists them.
const QList<Option> &options()
{
    static const QList<Option> all{
        {measureOption,
         {},
         {},
         {QStringLiteral("Measure what has no measurement today (UTC), without a"),
          QStringLiteral("window. When the window is open, it measures them.")}},
        {exportOption,
         csvForm + u'|' + jsonForm,
         {},
         {QStringLiteral("Write the keywords and what was measured last of each,"),
          QStringLiteral("without a window.")}},
        {appOption,
         QStringLiteral("APP"),
         {measureOption, exportOption},
         {QStringLiteral("Only keywords of this app: its name, or its App Store id."),
          QStringLiteral("May be given several times.")}},
        {storefrontOption,
         QStringLiteral("CODE"),
         {measureOption, exportOption},
         {QStringLiteral("Only keywords of this storefront: its two-letter code."),
          QStringLiteral("May be given several times.")}},
        {allOption,
         {},
         {measureOption},
         {QStringLiteral("Measure again what was measured today.")}},
        {jsonOption, {}, {measureOption}, {QStringLiteral("Print JSON objects, one a line.")}},
        {notifyOption,
         {},
         {measureOption},
         {QStringLiteral("Tell in a desktop notification what changed, and wait for a"),
          QStringLiteral("click on it, which opens Veltrix.")}},
        {historyOption, {}, {exportOption}, {QStringLiteral("Write all measurements instead.")}},
        {outputOption,
         QStringLiteral("FILE"),
         {exportOption},
         {QStringLiteral("Write to this file instead of standard output: whole, or"),
          QStringLiteral("not at all.")}},
        {overviewOption, {}, {}, {QStringLiteral("Open the window on the overview of all apps.")}},
        {helpOption, {}, {}, {QStringLiteral("Print this.")}},
        {versionOption, {}, {}, {QStringLiteral("Print the version.")}},
    };
    return all;
}

QString dashed(const QString &option)
{
    return QStringLiteral("--") + option;
}

QString helpText()
{
    QString text = QStringLiteral(
        "Usage: veltrix [--overview]\n"
        "       veltrix --measure [--app APP]... [--storefront CODE]... [--all] [--json]\n"
        "                         [--notify]\n"
        "       veltrix --export csv|json [--history] [--output FILE] [--app APP]...\n"
        "                         [--storefront CODE]...\n"
        "\n"
        "Without options Veltrix opens its window.\n"
        "\n");
    for (const Option &option : options()) {
        constexpr int column = 21;
        QString start =
            QStringLiteral("  ") + (dashed(option.name) + u' ' + option.value).trimmed();
        for (const QString &line : option.help) {
            text += start.leftJustified(column) + line + u'\n';
            start.clear();
        }
    }
    return text + QStringLiteral("\n"
                                 "Exit status:\n"
                                 "  0  all was measured or exported\n"
                                 "  1  some was not, or nothing could be written\n"
                                 "  2  wrong use\n"
                                 "  3  another Veltrix has the data and does not answer\n");
}

void describe(QCommandLineParser &parser)
{
    for (const Option &option : options()) {
        QStringList names{option.name};
        if (option.name == helpOption)
            names.prepend(QStringLiteral("h"));
        parser.addOption({names, QString(), option.value});
    }
}

/// Options with two dashes that a window takes: our one, and those of the toolkit.
bool isForTheWindow(const QString &name)
{
    static const QStringList names{
        overviewOption,
        QStringLiteral("display"),
        QStringLiteral("platform"),
        QStringLiteral("platformpluginpath"),
        QStringLiteral("platformtheme"),
        QStringLiteral("plugin"),
        QStringLiteral("qwindowgeometry"),
        QStringLiteral("qwindowicon"),
        QStringLiteral("qwindowtitle"),
        QStringLiteral("reverse"),
        QStringLiteral("session"),
        QStringLiteral("style"),
        QStringLiteral("stylesheet"),
        QStringLiteral("widgetcount"),
    };
    return names.contains(name);
}

/// Whether an argument is an option that no window takes, as "--app", "--app=3" or "-h". A mistyped
/// command is one as well: it is to be told, and not to open a window.
bool isCommandOption(const QString &argument)
{
    if (argument == QStringLiteral("-h"))
        return true;
    const QString name = argument.mid(2).section(u'=', 0, 0);
    return argument.startsWith(QStringLiteral("--")) && !name.isEmpty() && !isForTheWindow(name);
}

std::optional<QString> wrongInExport(const QCommandLineParser &parser)
{
    if (!parser.isSet(exportOption))
        return std::nullopt;
    if (parser.isSet(measureOption)) {
        return dashed(measureOption) + QStringLiteral(" does not go with ") + dashed(exportOption) +
               u'.';
    }
    const QStringList forms = parser.values(exportOption);
    if (forms.size() > 1 || (forms.constFirst() != csvForm && forms.constFirst() != jsonForm))
        return dashed(exportOption) + QStringLiteral(" is for one of “csv” and “json”.");
    const QStringList outputs = parser.values(outputOption);
    if (outputs.size() > 1 || outputs.contains(QString()))
        return dashed(outputOption) + QStringLiteral(" is for the name of one file.");
    return std::nullopt;
}

std::optional<QString> wrongIn(const QCommandLineParser &parser)
{
    if (!parser.positionalArguments().isEmpty()) {
        return QStringLiteral("“%1” is not an option.")
            .arg(parser.positionalArguments().constFirst());
    }
    if (parser.isSet(overviewOption)) {
        return dashed(overviewOption) +
               QStringLiteral(" opens the window, for which there is no command.");
    }
    const auto isSet = [&parser](const QString &name) {
        return parser.isSet(name);
    };
    for (const Option &option : options()) {
        if (!isSet(option.name) || option.commands.isEmpty() ||
            std::any_of(option.commands.begin(), option.commands.end(), isSet))
            continue;
        QStringList commands;
        for (const QString &command : option.commands)
            commands.append(dashed(command));
        return dashed(option.name) + QStringLiteral(" goes with ") +
               commands.join(QStringLiteral(" or ")) + u'.';
    }
    return wrongInExport(parser);
}

Command exportOf(const QCommandLineParser &parser)
{
    using Form = ExportCommand::Form;
    return ExportCommand{
        {parser.values(appOption), parser.values(storefrontOption)},
        parser.value(exportOption) == jsonForm ? Form::Json : Form::Csv,
        parser.isSet(historyOption),
        parser.isSet(outputOption) ? std::optional(parser.value(outputOption)) : std::nullopt,
    };
}

} // namespace

bool wantsOverview(const QStringList &arguments)
{
    return arguments.contains(dashed(overviewOption));
}

bool hasCommand(const QStringList &arguments)
{
    return std::any_of(arguments.begin() + 1, arguments.end(), isCommandOption);
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
    if (parser.isSet(exportOption))
        return exportOf(parser);
    return MeasureCommand{{parser.values(appOption), parser.values(storefrontOption)},
                          parser.isSet(allOption),
                          parser.isSet(jsonOption),
                          parser.isSet(notifyOption)};
}

} // namespace veltrix
