// SPDX-License-Identifier: GPL-3.0-or-later
// Measuring every day while the window is closed, as the settings offer it.
#pragma once

#include "effects/daily_timer.h"
#include "effects/task_scope.h"

#include <QObject>

#include <functional>
#include <optional>

namespace veltrix
{

/// Knows whether Veltrix is started every day to measure, and changes it. Knows no widget.
class DailyMeasuring final : public QObject
{
    Q_OBJECT

public:
    /// `timing` outlives this.
    explicit DailyMeasuring(DailyTiming &timing, QObject *parent = nullptr);

    /// Asks how it stands.
    void look();
    /// Turns it on, or changes when. Not while it isBusy().
    void turnOn(const DailyPlan &plan);
    void turnOff();

    /// Whether it is known how it stands, and can be changed.
    [[nodiscard]] bool isAvailable() const { return m_state && !m_state->unavailable; }
    [[nodiscard]] bool isOn() const { return m_state && m_state->isOn; }
    /// What it runs by, or would when it is turned on.
    [[nodiscard]] DailyPlan plan() const;
    /// What it runs by was changed by somebody else; turning it on writes it anew.
    [[nodiscard]] bool isChangedByHand() const { return m_state && m_state->isChangedByHand; }
    /// Something is being asked for.
    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    /// Why the last change was not made, in words; empty when it was.
    [[nodiscard]] const QString &problem() const { return m_problem; }
    /// How it stands, as sentences; empty until it is known.
    [[nodiscard]] QString statusText() const;

Q_SIGNALS:
    void changed();

private:
    using Change = std::function<Task<void>(std::stop_token stop)>;
    void begin(Change change);
    Task<void> changeAndLook(Change change, std::stop_token stop);

    DailyTiming &m_timing;
    std::optional<DailyTimerState> m_state;
    QString m_problem;
    bool m_isBusy = false;
    TaskScope m_tasks;
};

} // namespace veltrix
