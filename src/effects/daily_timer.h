// SPDX-License-Identifier: GPL-3.0-or-later
// Starting the program once a day by the user's service manager, also while nobody looks.
#pragma once

#include "effects/task_scope.h"
#include "model/date.h"
#include "model/error.h"

#include <QString>
#include <QTime>

#include <chrono>
#include <optional>

namespace veltrix
{

/// The service manager did not do as it was asked; says what it answered.
class DailyTimerError final : public Error
{
public:
    using Error::Error;
};

/// When the program is started each day.
struct DailyPlan {
    /// Local time.
    QTime at{9, 30};
    /// A start is put off by up to so long, another time each day: not all users ask the services
    /// at once.
    std::chrono::minutes randomDelay{15};

    bool operator==(const DailyPlan &) const = default;
};

/// What the service manager knows of the timer.
struct DailyTimerState {
    /// Why there can be no timer, in words for the user.
    std::optional<QString> unavailable;
    bool isOn = false;
    /// What it runs by; absent while it is off, and when its unit does not say it as this program
    /// writes it.
    std::optional<DailyPlan> plan;
    /// Somebody else has written or changed the unit, or added to it.
    bool isChangedByHand = false;
    /// Absent while it is not known.
    std::optional<Date> nextRun;
    std::optional<Date> lastRun;
    /// Whether the last run ended with something not measured or worse.
    bool hasLastRunFailed = false;

    bool operator==(const DailyTimerState &) const = default;
};

/// Starting `veltrix --measure` once a day, also on a day that was missed.
class DailyTiming
{
public:
    DailyTiming() = default;
    virtual ~DailyTiming() = default;
    DailyTiming(const DailyTiming &) = delete;
    DailyTiming &operator=(const DailyTiming &) = delete;

    [[nodiscard]] virtual Task<DailyTimerState> state(std::stop_token stop) = 0;
    /// Also changes the plan of a timer that is on. Throws DailyTimerError and FileError; then all
    /// is as it was before, as far as that can be had.
    virtual Task<void> turnOn(DailyPlan plan, std::stop_token stop) = 0;
    /// A run that has begun goes on. Throws DailyTimerError.
    virtual Task<void> turnOff(std::stop_token stop) = 0;
};

/// By a timer of the service manager: two unit files of the user, which this writes and removes.
class DailyTimer final : public DailyTiming
{
public:
    struct Arguments {
        /// The folder of the user's units.
        QString unitFolder;
        /// The program to start, as an absolute path.
        QString program;
        /// The command that speaks to the service manager.
        QString manager = QStringLiteral("systemctl");
    };

    /// The real ones: this program, and the folder below XDG_CONFIG_HOME.
    static Arguments ofThisProgram();

    explicit DailyTimer(Arguments arguments);

    [[nodiscard]] Task<DailyTimerState> state(std::stop_token stop) override;
    Task<void> turnOn(DailyPlan plan, std::stop_token stop) override;
    Task<void> turnOff(std::stop_token stop) override;

private:
    struct Answer {
        int status = 0;
        QString output;
        QString error;
    };
    Task<Answer> ask(QStringList arguments, std::stop_token stop);
    Task<QString> require(QStringList arguments, std::stop_token stop);
    Task<void> start(std::stop_token stop);
    [[nodiscard]] QString timerPath() const;
    [[nodiscard]] QString servicePath() const;

    Arguments m_arguments;
    TaskScope m_tasks;
};

/// The unit that measures. Folders that the user has set apart for the program (XDG_DATA_HOME and
/// its like) are set in it, because the service manager need not know them.
QString measureServiceUnit(const QString &program);
/// The unit that starts the other.
QString measureTimerUnit(const DailyPlan &plan);
/// The plan of such a unit; none of one that somebody has written in another way.
std::optional<DailyPlan> planOfTimerUnit(const QString &unit);

} // namespace veltrix
