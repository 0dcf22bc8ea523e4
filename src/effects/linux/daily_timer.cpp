// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/daily_timer.h"

#include "effects/atomic_file.h"
#include "effects/file_error.h"
#include "effects/one_shot.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include <map>

namespace veltrix
{

namespace
{

const QString timerName = QStringLiteral("veltrix-measure.timer");
const QString serviceName = QStringLiteral("veltrix-measure.service");

/// The service manager answers at once or never.
constexpr std::chrono::seconds managersPatience{10};

/// Waits for a process; ends it when stopped or too slow.
class RunningProcess
{
public:
    RunningProcess(const QString &program, const QStringList &arguments)
    {
        const OneShot<Done> ended = m_ended;
        QObject::connect(m_process, &QProcess::finished, m_process, [ended] { ended.resolve({}); });
        QObject::connect(m_process, &QProcess::errorOccurred, m_process,
                         [ended](QProcess::ProcessError error) {
                             if (error == QProcess::FailedToStart)
                                 ended.resolve({});
                         });
        QTimer::singleShot(managersPatience, m_process, &QProcess::kill);
        m_process->start(program, arguments, QIODevice::ReadOnly);
    }
    RunningProcess(const RunningProcess &) = delete;
    RunningProcess &operator=(const RunningProcess &) = delete;
    ~RunningProcess()
    {
        // It may be one of its own signals that leads here.
        m_process->disconnect();
        m_process->kill();
        m_process->deleteLater();
    }

    [[nodiscard]] OneShot<Done> ended() const { return m_ended; }
    QProcess &process() { return *m_process; }

private:
    QProcess *m_process = new QProcess;
    OneShot<Done> m_ended;
};

/// A unit file as it is now, or that there is none.
class UnitFile
{
public:
    explicit UnitFile(QString path) : m_path(std::move(path))
    {
        QFile file(m_path);
        if (file.open(QIODevice::ReadOnly))
            m_content = file.readAll();
    }
    void putBack() const
    {
        if (!m_content) {
            QFile::remove(m_path);
            return;
        }
        try {
            writeFileAtomically(m_path, *m_content);
        } catch (const FileError &) {
            // What made the change fail is told.
        }
    }

private:
    QString m_path;
    std::optional<QByteArray> m_content;
};

/// "Key=value" lines.
std::map<QString, QString> properties(const QString &output)
{
    std::map<QString, QString> result;
    for (const QString &line : output.split(u'\n'))
        result[line.section(u'=', 0, 0)] = line.section(u'=', 1);
    return result;
}

/// "@1795262400", or nothing known.
std::optional<Date> timeOf(const QString &text)
{
    bool isNumber = false;
    const double seconds = text.mid(1).toDouble(&isNumber);
    if (!text.startsWith(u'@') || !isNumber || seconds <= 0)
        return std::nullopt;
    return dateFromUnixSeconds(seconds);
}

} // namespace

DailyTimer::Arguments DailyTimer::ofThisProgram()
{
    return {QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                QStringLiteral("/systemd/user"),
            QCoreApplication::applicationFilePath()};
}

DailyTimer::DailyTimer(Arguments arguments) : m_arguments(std::move(arguments)) {}

QString DailyTimer::timerPath() const
{
    return m_arguments.unitFolder + u'/' + timerName;
}

QString DailyTimer::servicePath() const
{
    return m_arguments.unitFolder + u'/' + serviceName;
}

Task<DailyTimer::Answer> DailyTimer::ask(QStringList arguments, std::stop_token stop)
{
    arguments.prepend(QStringLiteral("--user"));
    RunningProcess running(m_arguments.manager, arguments);
    const OneShot<Done> ended = running.ended();
    co_await ended.wait(stop);
    QProcess &process = running.process();
    Answer answer;
    if (process.error() == QProcess::FailedToStart) {
        answer.status = -1;
        answer.error =
            QStringLiteral("“") + m_arguments.manager + QStringLiteral("” could not be started.");
        co_return answer;
    }
    answer.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    answer.output = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    answer.error = QString::fromUtf8(process.readAllStandardError()).trimmed();
    if (answer.status != 0 && answer.error.isEmpty())
        answer.error = QStringLiteral("The service manager did not answer.");
    co_return answer;
}

Task<QString> DailyTimer::require(QStringList arguments, std::stop_token stop)
{
    const Answer answer = co_await ask(std::move(arguments), stop);
    if (answer.status != 0)
        throw DailyTimerError(answer.error);
    co_return answer.output;
}

Task<DailyTimerState> DailyTimer::state(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    DailyTimerState result;
    QStringList question{QStringLiteral("show"), timerName, QStringLiteral("--timestamp=unix"),
                         QStringLiteral("--property=UnitFileState,ActiveState,DropInPaths,"
                                        "NextElapseUSecRealtime,LastTriggerUSec")};
    const Answer timer = co_await ask(std::move(question), stop);
    if (timer.status != 0) {
        result.unavailable = timer.error;
        co_return result;
    }
    auto known = properties(timer.output);
    result.isOn = known[QStringLiteral("UnitFileState")] == QStringLiteral("enabled") &&
                  known[QStringLiteral("ActiveState")] == QStringLiteral("active");
    if (!result.isOn)
        co_return result;
    QString unit;
    if (QFile file(timerPath()); file.open(QIODevice::ReadOnly))
        unit = QString::fromUtf8(file.readAll());
    result.plan = planOfTimerUnit(unit);
    result.isChangedByHand = !result.plan || unit != measureTimerUnit(*result.plan) ||
                             !known[QStringLiteral("DropInPaths")].isEmpty();
    result.nextRun = timeOf(known[QStringLiteral("NextElapseUSecRealtime")]);
    result.lastRun = timeOf(known[QStringLiteral("LastTriggerUSec")]);

    QStringList questionOfRun{QStringLiteral("show"), serviceName,
                              QStringLiteral("--property=ExecMainStatus,Result")};
    const Answer run = co_await ask(std::move(questionOfRun), stop);
    auto ended = properties(run.output);
    result.hasLastRunFailed =
        result.lastRun && (ended[QStringLiteral("ExecMainStatus")] != u'0' ||
                           ended[QStringLiteral("Result")] != QStringLiteral("success"));
    co_return result;
}

Task<void> DailyTimer::turnOn(DailyPlan plan, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    const UnitFile service(servicePath());
    const UnitFile timer(timerPath());
    std::exception_ptr failure;
    try {
        QDir().mkpath(m_arguments.unitFolder);
        writeFileAtomically(servicePath(), measureServiceUnit(m_arguments.program).toUtf8());
        writeFileAtomically(timerPath(), measureTimerUnit(plan).toUtf8());
        co_await start(stop);
    } catch (const Error &) {
        failure = std::current_exception();
    }
    if (!failure)
        co_return;
    service.putBack();
    timer.putBack();
    QStringList reload{QStringLiteral("daemon-reload")};
    co_await ask(std::move(reload), stop);
    std::rethrow_exception(failure);
}

/// Runs the timer by the units as they are.
Task<void> DailyTimer::start(std::stop_token stop)
{
    QStringList reload{QStringLiteral("daemon-reload")};
    co_await require(std::move(reload), stop);
    // "enable --now" leaves a timer alone that runs by an older plan.
    QStringList enable{QStringLiteral("enable"), timerName};
    co_await require(std::move(enable), stop);
    QStringList restart{QStringLiteral("restart"), timerName};
    co_await require(std::move(restart), stop);
}

Task<void> DailyTimer::turnOff(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    QStringList disable{QStringLiteral("disable"), QStringLiteral("--now"), timerName};
    if (QFile::exists(timerPath()))
        co_await require(std::move(disable), stop);
    QFile::remove(timerPath());
    QFile::remove(servicePath());
    QStringList reload{QStringLiteral("daemon-reload")};
    co_await require(std::move(reload), stop);
}

} // namespace veltrix
