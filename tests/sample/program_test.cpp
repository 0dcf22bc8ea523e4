// SPDX-License-Identifier: GPL-3.0-or-later
// The program itself: how it says that it is ready, and how it ends.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gmock/gmock.h>
#include <httplib.h>

#include <csignal>

namespace veltrix::sample
{
namespace
{

const QString program = QStringLiteral(VELTRIX_SAMPLE_SERVICES);

QByteArray contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Waits up to ten seconds for a condition.
template <typename Condition>
bool eventually(Condition condition)
{
    for (int attempt = 0; attempt < 1'000; ++attempt) {
        if (condition())
            return true;
        QThread::msleep(10);
    }
    return false;
}

/// The value of a ready line.
std::string valueOf(const QByteArray &lines, const QByteArray &name)
{
    for (const QByteArray &line : lines.split('\n'))
        if (line.startsWith(name + ' '))
            return line.mid(name.size() + 1).toStdString();
    return {};
}

/// The result of asking the services for something: "Success", or why there is no answer.
std::string askingGives(const std::string &origin)
{
    httplib::Client client(origin);
    return httplib::to_string(client.Get("/lookup?id=1&country=US").error());
}

TEST(Program, SaysWhereItsServicesAreAndEndsCleanlyOnEitherSignal)
{
    for (const int signal : {SIGTERM, SIGINT}) {
        const QTemporaryDir folder;
        const QString readyFile = folder.filePath(QStringLiteral("ready"));
        const QString authority = folder.filePath(QStringLiteral("ca.pem"));
        QProcess process;
        process.start(program,
                      {u"--ready-file"_qs, readyFile, u"--certificate-file"_qs, authority});
        ASSERT_TRUE(process.waitForStarted());
        ASSERT_TRUE(eventually([&] { return QFile::exists(readyFile); }));
        const QByteArray ready = contentOf(readyFile);
        for (const char *name :
             {"itunes", "hints", "store", "research", "publishable-key", "feed", "ed-public-key"})
            EXPECT_NE(valueOf(ready, name), "") << name;
        EXPECT_EQ(askingGives(valueOf(ready, "itunes")), "Success");
        EXPECT_TRUE(contentOf(authority).startsWith("-----BEGIN CERTIFICATE-----"));
        ASSERT_EQ(::kill(static_cast<pid_t>(process.processId()), signal), 0);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0);
        EXPECT_EQ(process.readAllStandardOutput(), ready);
        EXPECT_EQ(process.readAllStandardError(), "");
    }
}

TEST(Program, EndsWithItsParentWhenAskedTo)
{
    const QTemporaryDir folder;
    const QString readyFile = folder.filePath(QStringLiteral("ready"));
    QProcess parent;
    parent.start(QStringLiteral("/bin/sh"),
                 {u"-c"_qs, u"\"$0\" --die-with-parent --ready-file \"$1\" >/dev/null & wait"_qs,
                  program, readyFile});
    ASSERT_TRUE(parent.waitForStarted());
    ASSERT_TRUE(eventually([&] { return QFile::exists(readyFile); }));
    const std::string origin = valueOf(contentOf(readyFile), "itunes");
    EXPECT_EQ(askingGives(origin), "Success");
    parent.kill();
    ASSERT_TRUE(parent.waitForFinished());
    EXPECT_TRUE(eventually([&] { return askingGives(origin) == "Connection"; }));
}

TEST(Program, RefusesBadArgumentsAndTakenPorts)
{
    QProcess bad;
    bad.start(program, {u"--port=x"_qs});
    ASSERT_TRUE(bad.waitForFinished());
    EXPECT_EQ(bad.exitCode(), 2);

    httplib::Server other;
    const int taken = other.bind_to_any_port("127.0.0.1");
    ASSERT_GT(taken, 0);
    QProcess second;
    second.start(program, {u"--port"_qs, QString::number(taken)});
    ASSERT_TRUE(second.waitForFinished());
    EXPECT_EQ(second.exitCode(), 1);
    EXPECT_THAT(second.readAllStandardError().toStdString(), testing::HasSubstr("cannot be used"));
}

} // namespace
} // namespace veltrix::sample
