// SPDX-License-Identifier: GPL-3.0-or-later
#include "architecture/include_rules.h"

#include <QMap>
#include <QRegularExpression>

namespace veltrix
{

namespace
{

/// What each floor may include beside itself, below it.
const QMap<QString, QStringList> &floors()
{
    static const QMap<QString, QStringList> floors{
        {QStringLiteral("model"), {}},
        {QStringLiteral("json"), {QStringLiteral("model")}},
        {QStringLiteral("effects"), {QStringLiteral("model")}},
        {QStringLiteral("clients"),
         {QStringLiteral("model"), QStringLiteral("json"), QStringLiteral("effects")}},
        {QStringLiteral("scoring"), {QStringLiteral("model"), QStringLiteral("effects")}},
        {QStringLiteral("store"),
         {QStringLiteral("model"), QStringLiteral("json"), QStringLiteral("effects"),
          QStringLiteral("scoring")}},
        {QStringLiteral("headless"),
         {QStringLiteral("model"), QStringLiteral("json"), QStringLiteral("effects"),
          QStringLiteral("scoring"), QStringLiteral("store")}},
        {QStringLiteral("ui_kit"), {QStringLiteral("model"), QStringLiteral("effects")}},
        {QStringLiteral("ui"),
         {QStringLiteral("model"), QStringLiteral("effects"), QStringLiteral("scoring"),
          QStringLiteral("store"), QStringLiteral("ui_kit")}},
        {QStringLiteral("app"),
         {QStringLiteral("model"), QStringLiteral("effects"), QStringLiteral("clients"),
          QStringLiteral("scoring"), QStringLiteral("store"), QStringLiteral("headless"),
          QStringLiteral("json"), QStringLiteral("ui_kit"), QStringLiteral("ui")}},
    };
    return floors;
}

/// The folders of a floor from the lowest up; a folder includes only itself and lower ones.
QList<QStringList> foldersOf(const QString &floor)
{
    if (floor == QStringLiteral("ui_kit"))
        return {
            {QStringLiteral("text"), QStringLiteral("accessibility"), QStringLiteral("loading")},
            {QStringLiteral("theme")},
            {QStringLiteral("widgets")},
            {QStringLiteral("table")}};
    if (floor == QStringLiteral("ui"))
        return {
            {QStringLiteral("preferences"), QStringLiteral("measuring"), QStringLiteral("listing")},
            {QStringLiteral("suggestions")},
            {QStringLiteral("analysis"), QStringLiteral("app_search"),
             QStringLiteral("competitors"), QStringLiteral("dashboard"), QStringLiteral("history"),
             QStringLiteral("ranked_apps"), QStringLiteral("settings")},
            {QStringLiteral("overview")},
            {QStringLiteral("shell")}};
    return {};
}

/// The files in which calls of the system itself stand, and no others.
bool isOfThePlatform(const QString &path)
{
    return path.startsWith(QStringLiteral("effects/linux/")) ||
           path.startsWith(QStringLiteral("app/desktop_color_scheme.")) ||
           path.startsWith(QStringLiteral("app/desktop_notification."));
}

bool isPlatformHeader(const QString &header)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^(unistd|fcntl|poll|signal|pthread|dlfcn|netdb|pwd|grp|errno|termios|langinfo|syslog)\\.h$"
        "|"
        "^(sys|linux|arpa|netinet|net|asm|bits)/|^c(errno|signal)$|^QDBus|^QtDBus/"));
    return pattern.match(header).hasMatch();
}

bool isNetworkHeader(const QString &header)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^QtNetwork/|^Q(Network|Local(Server|Socket)|Tcp|Udp|Ssl|Http|Host|AbstractSocket|Dns)"));
    return pattern.match(header).hasMatch();
}

/// Files and processes, in Qt's form and in the language's.
bool isFileOrProcessHeader(const QString &header)
{
    static const QRegularExpression pattern(QStringLiteral(
        "^(QtCore/)?Q(File|Dir|SaveFile|Process|StandardPaths|Temporary|Settings|LockFile|Storage)|"
        "^(QtWidgets/)?QFileDialog$|^(fstream|filesystem|cstdio|cstdlib|stdio\\.h|stdlib\\.h)$"));
    return pattern.match(header).hasMatch();
}

/// What the windows may use of the effects: tasks, time, and images by address.
bool mayBeUsedByWindows(const QString &header)
{
    static const QStringList seams{QStringLiteral("effects/artwork_loading.h"),
                                   QStringLiteral("effects/autocomplete_suggesting.h"),
                                   QStringLiteral("effects/clock.h"),
                                   QStringLiteral("effects/daily_timer.h"),
                                   QStringLiteral("effects/file_output.h"),
                                   QStringLiteral("effects/one_shot.h"),
                                   QStringLiteral("effects/shared_task.h"),
                                   QStringLiteral("effects/task.h"),
                                   QStringLiteral("effects/task_scope.h")};
    return seams.contains(header);
}

qsizetype heightOf(const QList<QStringList> &folders, const QString &folder)
{
    for (qsizetype height = 0; height < folders.size(); ++height) {
        if (folders[height].contains(folder))
            return height;
    }
    return -1;
}

/// The rule that the include breaks; empty when it keeps all of them.
QString ruleForOwn(const QString &path, const QString &header)
{
    if (header.contains(QStringLiteral("..")) || !header.contains(u'/'))
        return QStringLiteral("includes are written \"<floor>/<file>.h\"");
    const QString floor = path.section(u'/', 0, 0);
    const QString other = header.section(u'/', 0, 0);
    if (!floors().contains(floor))
        return QStringLiteral("a floor that has no place in the order");
    if (other != floor && !floors()[floor].contains(other))
        return QStringLiteral("%1 does not see %2").arg(floor, other);
    const bool isWindow = floor == QStringLiteral("ui") || floor == QStringLiteral("ui_kit");
    if (isWindow && other == QStringLiteral("effects") && !mayBeUsedByWindows(header))
        return QStringLiteral("windows use no files and no system");
    if (other != floor || foldersOf(floor).isEmpty())
        return {};
    const QString folder = path.section(u'/', 1, 1);
    const QString otherFolder = header.section(u'/', 1, 1);
    const qsizetype height = heightOf(foldersOf(floor), folder);
    const qsizetype otherHeight = heightOf(foldersOf(floor), otherFolder);
    if (height < 0 || otherHeight < 0)
        return QStringLiteral("a folder that has no place in the order of %1").arg(floor);
    if (folder != otherFolder && otherHeight >= height)
        return QStringLiteral("%1 does not stand above %2").arg(folder, otherFolder);
    return {};
}

QString ruleForSystem(const QString &path, const QString &header)
{
    if (isPlatformHeader(header) && !isOfThePlatform(path))
        return QStringLiteral("calls of the system stand in effects/linux");
    if (!path.startsWith(QStringLiteral("ui/")) && !path.startsWith(QStringLiteral("ui_kit/")))
        return {};
    if (isNetworkHeader(header))
        return QStringLiteral("windows do not speak to the network");
    if (isFileOrProcessHeader(header))
        return QStringLiteral("windows use no files and no processes");
    return {};
}

} // namespace

QStringList forbiddenIncludes(const QString &path, const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"(^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]*)[>"])"),
        QRegularExpression::MultilineOption);
    QStringList faults;
    for (auto match = pattern.globalMatch(text); match.hasNext();) {
        const QRegularExpressionMatch include = match.next();
        const QString header = include.captured(2);
        const bool isOwn = include.captured(1) == QStringLiteral("\"") ||
                           floors().contains(header.section(u'/', 0, 0));
        const QString rule = isOwn ? ruleForOwn(path, header) : ruleForSystem(path, header);
        if (!rule.isEmpty())
            faults.append(QStringLiteral("%1: %2: %3").arg(path, header, rule));
    }
    return faults;
}

} // namespace veltrix
