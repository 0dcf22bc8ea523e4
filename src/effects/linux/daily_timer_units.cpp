// SPDX-License-Identifier: GPL-3.0-or-later
// The unit files of the daily timer.
#include "effects/daily_timer.h"

#include <QRegularExpression>

namespace veltrix
{

namespace
{

/// A word of a unit file: quoted, without meaning for the service manager.
QString unitWord(const QString &word)
{
    QString escaped = word;
    escaped.replace(u'\\', QStringLiteral("\\\\"))
        .replace(u'"', QStringLiteral("\\\""))
        .replace(u'\n', QStringLiteral("\\n"))
        .replace(u'%', QStringLiteral("%%"));
    return u'"' + escaped + u'"';
}

/// The first word of a command line, in which a dollar sign means a variable.
QString commandWord(const QString &word)
{
    return unitWord(word).replace(u'$', QStringLiteral("$$"));
}

QString environmentLines()
{
    QString lines;
    for (const char *name : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"}) {
        const QString value = qEnvironmentVariable(name);
        if (!value.isEmpty())
            lines += QStringLiteral("Environment=") +
                     unitWord(QString::fromLatin1(name) + u'=' + value) + u'\n';
    }
    return lines;
}

} // namespace

QString measureServiceUnit(const QString &program)
{
    return QStringLiteral("# Written by Veltrix; its settings change or remove this file.\n"
                          "[Unit]\n"
                          "Description=Veltrix measures keywords\n"
                          "\n"
                          "[Service]\n"
                          "Type=oneshot\n"
                          "ExecStart=") +
           commandWord(program) + QStringLiteral(" --measure --notify\n") + environmentLines() +
           QStringLiteral("Nice=10\n"
                          // A click on its notification opens a window, which stays.
                          "KillMode=process\n"
                          // Some keywords that could not be measured are no failure of the program,
                          // and one that has the data is measuring by itself.
                          "SuccessExitStatus=1 3\n");
}

QString measureTimerUnit(const DailyPlan &plan)
{
    return QStringLiteral("# Written by Veltrix; its settings change or remove this file.\n"
                          "[Unit]\n"
                          "Description=Veltrix measures keywords every day\n"
                          "\n"
                          "[Timer]\n"
                          "OnCalendar=*-*-* ") +
           plan.at.toString(QStringLiteral("HH:mm")) + QStringLiteral(":00\nRandomizedDelaySec=") +
           QString::number(plan.randomDelay.count()) +
           QStringLiteral("min\n"
                          "Persistent=true\n"
                          "\n"
                          "[Install]\n"
                          "WantedBy=timers.target\n");
}

std::optional<DailyPlan> planOfTimerUnit(const QString &unit)
{
    static const QRegularExpression pattern(
        QStringLiteral("^OnCalendar=\\*-\\*-\\* (\\d\\d:\\d\\d):00$.*"
                       "^RandomizedDelaySec=(\\d{1,4})min$"),
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    const auto match = pattern.match(unit);
    const QTime at = QTime::fromString(match.captured(1), QStringLiteral("HH:mm"));
    if (!match.hasMatch() || !at.isValid())
        return std::nullopt;
    return DailyPlan{at, std::chrono::minutes(match.captured(2).toInt())};
}

} // namespace veltrix
