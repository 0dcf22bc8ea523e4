// SPDX-License-Identifier: GPL-3.0-or-later
// The real research service on this machine.
#include "running_service.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <QUrl>

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>

namespace veltrix
{

namespace
{

const QString script = QStringLiteral(VELTRIX_SERVICE_SCRIPT);
/// A first start makes a database.
constexpr int longestStartMs = 120'000;
constexpr int longestCommandMs = 60'000;

QByteArray contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

sample::Options appStoreOptions(const QString &log)
{
    sample::Options options;
    options.logFile = log;
    return options;
}

/// The value of a line "name=value".
QString valueOf(const QByteArray &lines, const QByteArray &name)
{
    for (const QByteArray &line : lines.split('\n'))
        if (line.startsWith(name + '='))
            return QString::fromUtf8(line.mid(name.size() + 1));
    return {};
}

} // namespace

RunningService::RunningService() : m_appStore(appStoreOptions(path("searches.log")))
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(path("service.log"), QIODevice::Append);
    // Nothing may outlive a test that crashes.
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

RunningService::~RunningService()
{
    stop();
}

void RunningService::start(const QStringList &environment)
{
    stop();
    const QString readyFile = path("ready.txt");
    QFile::remove(readyFile);
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : environment)
        all.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    m_process.setProcessEnvironment(all);
    m_process.start(script,
                    {u"start"_qs, u"--folder"_qs, m_serviceFolder.path(), u"--port"_qs, m_port,
                     u"--upstream"_qs, appStoreOrigin(), u"--ready-file"_qs, readyFile});
    QElapsedTimer timer;
    timer.start();
    while (!QFile::exists(readyFile)) {
        if (m_process.waitForFinished(50) || timer.hasExpired(longestStartMs))
            fail(QStringLiteral("The service did not start."));
    }
    m_port =
        QString::number(QUrl(valueOf(contentOf(readyFile), QByteArrayLiteral("research"))).port());
}

void RunningService::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    m_process.waitForFinished(longestCommandMs);
}

void RunningService::kill()
{
    const auto number = QString::number(m_process.processId());
    const QByteArray children = contentOf(QStringLiteral("/proc/%1/task/%1/children").arg(number));
    for (const QByteArray &child : children.split(' ')) {
        const QString name = QStringLiteral("/proc/%1/comm").arg(QString::fromLatin1(child));
        if (contentOf(name).startsWith("deno"))
            ::kill(child.toInt(), SIGKILL);
    }
    if (!m_process.waitForFinished(longestCommandMs))
        fail(QStringLiteral("The service did not end."));
}

QByteArray RunningService::sql(const QString &statements)
{
    return run(
        {u"sql"_qs, u"--folder"_qs, m_serviceFolder.path(), u"-At"_qs, u"-c"_qs, statements});
}

void RunningService::setState(const QString &given, const QString &keyword)
{
    run({u"state"_qs, given, keyword, u"US"_qs, u"--folder"_qs, m_serviceFolder.path()});
}

void RunningService::waitForFetch()
{
    const auto leases =
        u"select count(*) from aso_research.fetch_job where lease_token is not null"_qs;
    QElapsedTimer timer;
    timer.start();
    while (sql(leases).trimmed() != "1") {
        if (timer.hasExpired(longestCommandMs))
            fail(QStringLiteral("Nothing is fetched."));
        QCoreApplication::processEvents();
    }
    // From the claim to the request.
    QThread::msleep(300);
}

QByteArray RunningService::run(const QStringList &arguments)
{
    QProcess command;
    command.setProcessChannelMode(QProcess::MergedChannels);
    command.start(script, arguments);
    const bool ended = command.waitForFinished(longestCommandMs);
    const QByteArray output = command.readAll();
    if (!ended || command.exitCode() != 0)
        fail(
            QStringLiteral("“%1” failed: %2").arg(arguments.join(u' '), QString::fromUtf8(output)));
    return output;
}

QString RunningService::resourceFolder() const
{
    return m_serviceFolder.filePath(u"bundle"_qs);
}

int RunningService::searches() const
{
    return int(contentOf(path("searches.log")).count("GET /search "));
}

QString RunningService::path(const char *name) const
{
    return m_folder.filePath(QString::fromLatin1(name));
}

void RunningService::fail(const QString &what) const
{
    throw std::runtime_error(
        (what + u'\n' + QString::fromUtf8(contentOf(path("service.log")))).toStdString());
}

} // namespace veltrix
