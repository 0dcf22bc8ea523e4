// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/daily_measuring.h"

#include "ui_kit/text/date_texts.h"

#include <utility>

namespace veltrix
{

DailyMeasuring::DailyMeasuring(DailyTiming &timing, QObject *parent)
    : QObject(parent), m_timing(timing)
{
}

void DailyMeasuring::look()
{
    begin(nullptr);
}

void DailyMeasuring::turnOn(const DailyPlan &plan)
{
    begin([this, plan](std::stop_token stop) { return m_timing.turnOn(plan, std::move(stop)); });
}

void DailyMeasuring::turnOff()
{
    begin([this](std::stop_token stop) { return m_timing.turnOff(std::move(stop)); });
}

void DailyMeasuring::begin(Change change)
{
    // A change that has begun is not left half made.
    if (m_isBusy)
        return;
    m_isBusy = true;
    Q_EMIT changed();
    m_tasks.own(changeAndLook(std::move(change), m_tasks.token()));
}

Task<void> DailyMeasuring::changeAndLook(Change change, std::stop_token stop)
{
    QString problem;
    if (change) {
        try {
            co_await change(stop);
        } catch (const Error &error) {
            problem = error.description();
        }
    }
    throwIfStopped(stop);
    DailyTimerState state = co_await m_timing.state(stop);
    m_problem = problem;
    m_state = std::move(state);
    m_isBusy = false;
    Q_EMIT changed();
}

DailyPlan DailyMeasuring::plan() const
{
    return m_state ? m_state->plan.value_or(DailyPlan()) : DailyPlan();
}

QString DailyMeasuring::statusText() const
{
    if (!m_state)
        return {};
    if (m_state->unavailable) {
        return tr("Veltrix cannot be started every day here: that is done by systemd’s user "
                  "manager, which does not answer. It says: %1")
            .arg(*m_state->unavailable);
    }
    if (!m_state->isOn)
        return tr("Off. Keywords are measured while the window is open.");
    QStringList sentences;
    if (m_state->isChangedByHand)
        sentences.append(tr("The timer was changed outside of Veltrix."));
    sentences.append(m_state->nextRun ? tr("Next run: %1.").arg(dateTimeText(*m_state->nextRun))
                                      : tr("It is not known when it runs next."));
    if (m_state->lastRun) {
        sentences.append((m_state->hasLastRunFailed
                              ? tr("Last run: %1; not all keywords were measured.")
                              : tr("Last run: %1."))
                             .arg(dateTimeText(*m_state->lastRun)));
    }
    return sentences.join(u' ');
}

} // namespace veltrix
