// SPDX-License-Identifier: GPL-3.0-or-later
// The daily timer, with a stand-in for the service manager; its units are read by the real one.
#include "effects/daily_timer.h"

#include "effects/atomic_file.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const DailyPlan evening{QTime(21, 5), std::chrono::minutes(30)};

class DailyTimerTest : public testing::Test
{
protected:
    DailyTimerTest() { managerDoes("exit 0"); }

    /// The stand-in: writes down how it was called, then does this.
    void managerDoes(const QByteArray &script)
    {
        const QString path = folder.filePath(QStringLiteral("manager"));
        writeFileAtomically(path, "#!/bin/sh\necho \"$*\" >> \"$(dirname \"$0\")/calls\"\n" +
                                      script + '\n');
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    DailyTimer &timer()
    {
        m_timer = std::make_unique<DailyTimer>(
            DailyTimer::Arguments{units(), QStringLiteral("/opt/veltrix/bin/veltrix"), manager});
        return *m_timer;
    }
    DailyTimerState state()
    {
        Outcome<DailyTimerState> outcome(timer().state(std::stop_token()));
        return outcome.wait().value();
    }
    Outcome<Done> turnOn(const DailyPlan &plan = evening)
    {
        Outcome<Done> outcome(finished(timer().turnOn(plan, std::stop_token())));
        outcome.wait();
        return outcome;
    }
    Outcome<Done> turnOff()
    {
        Outcome<Done> outcome(finished(timer().turnOff(std::stop_token())));
        outcome.wait();
        return outcome;
    }
    /// How the manager was called since the last time, a line each.
    QStringList calls()
    {
        const QString path = folder.filePath(QStringLiteral("calls"));
        QStringList lines = QString::fromUtf8(readWholeFile(path)).split(u'\n', Qt::SkipEmptyParts);
        QFile::remove(path);
        return lines;
    }
    [[nodiscard]] QString units() const { return folder.filePath(QStringLiteral("systemd/user")); }
    [[nodiscard]] QString unitPath(const char *name) const
    {
        return units() + QStringLiteral("/veltrix-measure.") + QString::fromLatin1(name);
    }

    QTemporaryDir folder;
    QString manager = folder.filePath(QStringLiteral("manager"));

private:
    std::unique_ptr<DailyTimer> m_timer;
};

TEST_F(DailyTimerTest, IsTurnedOnWithItsUnitsInPlace)
{
    EXPECT_TRUE(turnOn().hasValue());
    EXPECT_EQ(calls(), (QStringList{QStringLiteral("--user daemon-reload"),
                                    QStringLiteral("--user enable veltrix-measure.timer"),
                                    QStringLiteral("--user restart veltrix-measure.timer")}));
    const QString timerUnit = QString::fromUtf8(readWholeFile(unitPath("timer")));
    EXPECT_TRUE(timerUnit.contains(QStringLiteral("\nOnCalendar=*-*-* 21:05:00\n")));
    EXPECT_TRUE(timerUnit.contains(QStringLiteral("\nPersistent=true\n")));
    EXPECT_TRUE(QString::fromUtf8(readWholeFile(unitPath("service")))
                    .contains(QStringLiteral(
                        "\nExecStart=\"/opt/veltrix/bin/veltrix\" --measure --notify\n")));
}

TEST_F(DailyTimerTest, IsTurnedOffAndLeavesNothing)
{
    turnOn();
    calls();
    EXPECT_TRUE(turnOff().hasValue());
    EXPECT_EQ(calls(), (QStringList{QStringLiteral("--user disable --now veltrix-measure.timer"),
                                    QStringLiteral("--user daemon-reload")}));
    EXPECT_TRUE(QDir(units()).isEmpty());
}

TEST_F(DailyTimerTest, ThatIsOffIsTurnedOffWithoutHarm)
{
    EXPECT_TRUE(turnOff().hasValue());
    EXPECT_EQ(calls(), QStringList{QStringLiteral("--user daemon-reload")});
}

TEST_F(DailyTimerTest, TellsWhenItRunsNextAndHowTheLastRunEnded)
{
    turnOn();
    managerDoes("case \"$*\" in *timer*) echo UnitFileState=enabled; echo ActiveState=active;"
                " echo NextElapseUSecRealtime=@1795262400; echo LastTriggerUSec=@1795176000;;"
                " *) echo ExecMainStatus=1; echo Result=success;; esac");
    DailyTimerState expected;
    expected.isOn = true;
    expected.plan = evening;
    expected.nextRun = dateFromUnixSeconds(1'795'262'400);
    expected.lastRun = dateFromUnixSeconds(1'795'176'000);
    expected.hasLastRunFailed = true;
    EXPECT_EQ(state(), expected);
}

TEST_F(DailyTimerTest, TellsThatSomebodyElseHasChangedIt)
{
    turnOn();
    const auto isOn = [this](const char *dropIns) {
        managerDoes(QByteArray("echo UnitFileState=enabled; echo ActiveState=active; "
                               "echo DropInPaths=") +
                    dropIns);
    };
    isOn("");
    EXPECT_FALSE(state().isChangedByHand);
    isOn("/home/ana/.config/systemd/user/veltrix-measure.timer.d/override.conf");
    EXPECT_TRUE(state().isChangedByHand);
    isOn("");
    const QByteArray unit = readWholeFile(unitPath("timer"));
    writeFileAtomically(unitPath("timer"), unit + "WakeSystem=true\n");
    EXPECT_TRUE(state().isChangedByHand);
    EXPECT_EQ(state().plan, evening);
    writeFileAtomically(unitPath("timer"), "[Timer]\nOnCalendar=hourly\n");
    EXPECT_TRUE(state().isOn && state().isChangedByHand);
    EXPECT_EQ(state().plan, std::nullopt);
    turnOn();
    isOn("");
    EXPECT_FALSE(state().isChangedByHand) << "written anew";
}

TEST_F(DailyTimerTest, ThatNeverRanHasNotFailed)
{
    turnOn();
    managerDoes("case \"$*\" in *timer*) echo UnitFileState=enabled; echo ActiveState=active;"
                " echo NextElapseUSecRealtime=@1795262400; echo LastTriggerUSec=;;"
                " *) echo ExecMainStatus=0; echo Result=success;; esac");
    EXPECT_EQ(state().lastRun, std::nullopt);
    EXPECT_FALSE(state().hasLastRunFailed);
}

TEST_F(DailyTimerTest, IsOffWhenItsUnitsAreThereButNobodyRunsThem)
{
    turnOn();
    managerDoes("echo UnitFileState=disabled; echo ActiveState=inactive");
    EXPECT_EQ(state(), DailyTimerState());
}

TEST_F(DailyTimerTest, SaysThatThereIsNoServiceManager)
{
    managerDoes("echo 'Failed to connect to bus: No medium found' >&2; exit 1");
    EXPECT_EQ(state().unavailable, QStringLiteral("Failed to connect to bus: No medium found"));
    const Outcome<Done> outcome = turnOn();
    EXPECT_TRUE(outcome.holds<DailyTimerError>());
    EXPECT_TRUE(QDir(units()).isEmpty()) << "as it was before";
    manager = folder.filePath(QStringLiteral("nothing"));
    EXPECT_EQ(state().unavailable,
              QStringLiteral("“") + manager + QStringLiteral("” could not be started."));
}

TEST_F(DailyTimerTest, AChangeThatFailsLeavesTheOldPlan)
{
    turnOn();
    managerDoes("case \"$*\" in *restart*) echo 'Unit is masked.' >&2; exit 1;; esac");
    EXPECT_TRUE(turnOn({QTime(6, 0), std::chrono::minutes(5)}).holds<DailyTimerError>());
    EXPECT_EQ(planOfTimerUnit(QString::fromUtf8(readWholeFile(unitPath("timer")))), evening);
}

TEST_F(DailyTimerTest, AStopEndsTheWaitForAManagerThatDoesNotAnswer)
{
    managerDoes("exec sleep 600");
    std::stop_source stop;
    const Outcome<DailyTimerState> outcome(timer().state(stop.get_token()));
    stop.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
}

TEST_F(DailyTimerTest, UnderstandsTheRealServiceManager)
{
    if (QStandardPaths::findExecutable(QStringLiteral("systemctl")).isEmpty())
        GTEST_SKIP() << "systemctl is not installed";
    // It is only asked: turning on would change the timer of whoever runs this.
    manager = QStringLiteral("systemctl");
    const DailyTimerState real = state();
    if (real.unavailable) {
        EXPECT_FALSE(real.unavailable->isEmpty());
        EXPECT_FALSE(real.isOn);
        GTEST_SKIP() << "no user manager: " << real.unavailable->toStdString();
    }
    EXPECT_EQ(real.isOn, real.nextRun.has_value());
}

TEST(DailyTimerUnits, KeepTheirPlan)
{
    for (const DailyPlan &plan : {DailyPlan(), evening, DailyPlan{QTime(0, 0), {}}})
        EXPECT_EQ(planOfTimerUnit(measureTimerUnit(plan)), plan);
    EXPECT_EQ(planOfTimerUnit(QStringLiteral("[Timer]\nOnBootSec=5min\n")), std::nullopt);
    EXPECT_EQ(planOfTimerUnit(QStringLiteral("OnCalendar=*-*-* 25:00:00\n"
                                             "RandomizedDelaySec=1min\n")),
              std::nullopt);
}

TEST(DailyTimerUnits, NameTheUsersOwnFolders)
{
    qputenv("XDG_DATA_HOME", "/data/a \"b\" %h\\c");
    const QString unit = measureServiceUnit(QStringLiteral("/opt/$HOME/100%/veltrix"));
    qunsetenv("XDG_DATA_HOME");
    EXPECT_TRUE(unit.contains(
        QStringLiteral("\nEnvironment=\"XDG_DATA_HOME=/data/a \\\"b\\\" %%h\\\\c\"\n")))
        << unit.toStdString();
    EXPECT_TRUE(unit.contains(QStringLiteral("ExecStart=\"/opt/$$HOME/100%%/veltrix\" --measure")))
        << unit.toStdString();
}

TEST(DailyTimerUnits, AreUnderstoodByTheServiceManager)
{
    if (QStandardPaths::findExecutable(QStringLiteral("systemd-analyze")).isEmpty())
        GTEST_SKIP() << "systemd-analyze is not installed";
    QTemporaryDir folder;
    const auto write = [&folder](const char *name, const QString &unit) {
        const QString path = folder.filePath(QString::fromLatin1(name));
        writeFileAtomically(path, unit.toUtf8());
        return path;
    };
    const QString program = folder.filePath(QStringLiteral("a \"strange\" 100% $HOME"));
    writeFileAtomically(program, "#!/bin/sh\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    write("veltrix-measure.service", measureServiceUnit(program));
    const QString timer = write("veltrix-measure.timer", measureTimerUnit(evening));

    const auto verify = [&](const QString &path) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral("systemd-analyze"),
                      {QStringLiteral("--user"), QStringLiteral("verify"), path});
        process.waitForFinished();
        return process.exitCode() == 0 ? QByteArray() : process.readAll() + "(failed)";
    };
    EXPECT_EQ(verify(timer), "");
    const QString wrong = write("wrong.timer", QStringLiteral("[Timer]\nOnCalendar=every noon\n"));
    EXPECT_NE(verify(wrong), "");
}

} // namespace
} // namespace veltrix
