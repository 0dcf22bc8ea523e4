// SPDX-License-Identifier: GPL-3.0-or-later
// The settings of measuring every day: the switch, the time, and how it stands.
#pragma once

#include <QWidget>

#include <array>
#include <chrono>

class QCheckBox;

namespace veltrix
{

class Button;
class DailyMeasuring;
class SegmentedControl;
class SettingsSection;
class TextField;
class TextLabel;

/// Puts its parts into a section and ties them to daily measuring. Itself it shows nothing.
class DailyMeasuringView final : public QWidget
{
    Q_OBJECT

public:
    /// The random delays that are offered.
    static constexpr std::array<std::chrono::minutes, 4> delays{
        std::chrono::minutes(0), std::chrono::minutes(15), std::chrono::minutes(30),
        std::chrono::minutes(60)};

    /// `daily` outlives this.
    DailyMeasuringView(DailyMeasuring &daily, SettingsSection &section);

private:
    void prepareTime();
    [[nodiscard]] QWidget *statusRow();
    void showState();
    /// Runs by what is entered now.
    void turnOn();
    /// The same while it is on.
    void applyPlan();

    DailyMeasuring &m_daily;
    QCheckBox *m_switch;
    TextField *m_time;
    SegmentedControl *m_delay;
    QWidget *m_timeRow = nullptr;
    QWidget *m_delayRow = nullptr;
    TextLabel *m_status;
    Button *m_writeAnew;
};

} // namespace veltrix
