// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/daily_measuring_view.h"

#include "ui/settings/daily_measuring.h"
#include "ui/settings/settings_section.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/segmented_control.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QCheckBox>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include <algorithm>

namespace veltrix
{

namespace
{

/// As a clock shows it: "9:30", "21:05".
const QRegularExpression timePattern(QStringLiteral("([01]?[0-9]|2[0-3])[:.][0-5][0-9]"));

QString timeText(QTime time)
{
    return time.toString(QStringLiteral("HH:mm"));
}

QTime timeOf(QString text)
{
    return QTime::fromString(text.replace(u'.', u':'), QStringLiteral("H:mm"));
}

int indexOf(std::chrono::minutes delay)
{
    const auto &delays = DailyMeasuringView::delays;
    // One that somebody else has chosen is shown as the next longer.
    const auto *const found = std::lower_bound(delays.begin(), delays.end() - 1, delay);
    return int(found - delays.begin());
}

} // namespace

DailyMeasuringView::DailyMeasuringView(DailyMeasuring &daily, SettingsSection &section)
    : QWidget(&section), m_daily(daily), m_switch(new QCheckBox(tr("Measure every day"))),
      m_time(new TextField(QStringLiteral("dailyTime"), tr("Time of day"), QString())),
      m_delay(new SegmentedControl(QStringLiteral("dailyDelay"), tr("Random delay"),
                                   QStringLiteral("dailyDelay"),
                                   {{tr("None"), tr("None")},
                                    {tr("15 min"), tr("Up to 15 minutes")},
                                    {tr("30 min"), tr("Up to 30 minutes")},
                                    {tr("1 h"), tr("Up to an hour")}})),
      m_status(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                             QStringLiteral("dailyStatus"))),
      m_writeAnew(new Button(Button::Kind::Standard, tr("Write Anew")))
{
    hide(); // Its parts stand in the section; it only ties them to daily measuring.
    nameControl(m_switch, QStringLiteral("dailyMeasuring"), m_switch->text());
    prepareTime();
    section.addRow(m_switch);
    m_timeRow = section.addRow(tr("Time of day"), m_time);
    m_delayRow = section.addRow(tr("Random delay"), m_delay);
    section.addContinuation(statusRow());
    section.addNote(tr("Keywords without a measurement on the day (UTC) are measured, also while "
                       "Veltrix is closed. A day that the computer slept through is caught up."));
    // Assistive technology toggles a box without a click.
    connect(m_switch, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            turnOn();
        else
            m_daily.turnOff();
    });
    connect(m_time, &TextField::editingFinished, this, &DailyMeasuringView::applyPlan);
    connect(m_delay, &SegmentedControl::changed, this, &DailyMeasuringView::applyPlan);
    connect(m_writeAnew, &Button::clicked, this, &DailyMeasuringView::turnOn);
    connect(&m_daily, &DailyMeasuring::changed, this, &DailyMeasuringView::showState);
    m_time->setText(timeText(m_daily.plan().at));
    m_delay->choose(indexOf(m_daily.plan().randomDelay));
    showState();
    m_daily.look();
}

void DailyMeasuringView::prepareTime()
{
    m_time->setValidator(new QRegularExpressionValidator(timePattern, m_time));
    m_time->setFixedWidth(m_time->fontMetrics().horizontalAdvance(QStringLiteral("00:00")) +
                          3 * spacing::m);
    m_time->setAlignment(Qt::AlignHCenter);
}

QWidget *DailyMeasuringView::statusRow()
{
    nameControl(m_writeAnew, QStringLiteral("dailyWriteAnew"), m_writeAnew->text());
    m_writeAnew->setToolTip(tr("Replaces the timer by one with this time and delay"));
    auto *parts = new QWidget;
    auto *row = makeRow(spacing::m, parts, {0, spacing::xs, 0, spacing::s});
    row->addWidget(m_status, 1);
    row->addWidget(m_writeAnew);
    return parts;
}

void DailyMeasuringView::turnOn()
{
    const QTime at = timeOf(m_time->text());
    m_daily.turnOn({at.isValid() ? at : m_daily.plan().at, delays[size_t(m_delay->chosen())]});
}

void DailyMeasuringView::applyPlan()
{
    const DailyPlan entered{timeOf(m_time->text()), delays[size_t(m_delay->chosen())]};
    if (m_daily.isOn() && entered.at.isValid() && entered != m_daily.plan())
        turnOn();
}

void DailyMeasuringView::showState()
{
    // What cannot be changed just now keeps the focus all the same.
    const bool mayChange = m_daily.isAvailable();
    m_switch->setEnabled(mayChange);
    if (!m_daily.isBusy()) {
        const QSignalBlocker quiet(m_switch);
        m_switch->setChecked(m_daily.isOn());
    }
    m_timeRow->setVisible(mayChange);
    m_delayRow->setVisible(mayChange);
    if (m_daily.isOn() && !m_daily.isBusy()) {
        const QSignalBlocker quiet(m_delay);
        m_time->setText(timeText(m_daily.plan().at));
        m_delay->choose(indexOf(m_daily.plan().randomDelay));
    }
    m_writeAnew->setVisible(mayChange && m_daily.isChangedByHand());
    const bool isRefused = !m_daily.problem().isEmpty();
    m_status->setTone(isRefused ? TextLabel::Tone::Red : TextLabel::Tone::Secondary);
    const QString text =
        isRefused ? tr("This was not done: %1").arg(m_daily.problem()) : m_daily.statusText();
    m_status->setText(text);
    m_status->setAccessibleName(text);
}

} // namespace veltrix
