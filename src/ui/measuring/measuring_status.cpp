// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/measuring/measuring_status.h"

#include "ui/measuring/admission_texts.h"
#include "ui_kit/text/shown_text.h"

#include <QLocale>

namespace veltrix
{

MeasuringStatus::MeasuringStatus(KeywordRefreshes &refreshes, QObject *parent)
    : QObject(parent), m_refreshes(refreshes)
{
    connect(&m_refreshes, &KeywordRefreshes::progressChanged, this, [this] {
        if (m_refreshes.progress().isIdle())
            endPromise();
        Q_EMIT changed();
    });
    connect(&m_refreshes, &KeywordRefreshes::errorChanged, this, [this] {
        if (m_refreshes.error())
            endPromise();
        Q_EMIT changed();
    });
}

MeasuringStatus::~MeasuringStatus() = default;

MeasuringStatus::Problem MeasuringStatus::problem() const
{
    Problem problem{m_refreshes.error().value_or(QString()), QString()};
    if (const auto &failure = m_refreshes.failure())
        problem.detail = tr("“%1”: %2").arg(inSentence(failure->keyword.keyword), failure->reason);
    return problem;
}

std::optional<StatusBar::Work> MeasuringStatus::work() const
{
    if (m_otherWork)
        return m_otherWork;
    const RefreshProgress &progress = m_refreshes.progress();
    if (progress.isIdle())
        return std::nullopt;
    const double fraction = double(progress.done) / progress.total();
    if (!progress.current)
        return StatusBar::Work{tr("Updating rankings…"), fraction};
    return StatusBar::Work{tr("Measuring “%1” · %2 of %3")
                               .arg(inSentence(progress.current->keyword),
                                    QLocale().toString(progress.done + 1),
                                    QLocale().toString(progress.total())),
                           fraction};
}

void MeasuringStatus::say(const QString &message, StatusBar::Tone tone, const QString &detail)
{
    m_message = message;
    m_messageDetail = detail;
    m_tone = tone;
    m_isPromise = false;
    m_waitsForApp = false;
    Q_EMIT changed();
}

void MeasuringStatus::sayWithoutApp(const QString &problem)
{
    say(problem, StatusBar::Tone::Error);
    m_waitsForApp = true;
}

void MeasuringStatus::setAppInView(std::optional<QUuid> appId)
{
    m_appInView = appId;
    // The problem goes with its cause.
    if (appId && m_waitsForApp)
        say(QString());
}

void MeasuringStatus::say(const AdmissionStatus &status)
{
    say(status.message, status.isProblem ? StatusBar::Tone::Error : StatusBar::Tone::Normal,
        status.detail);
    m_isPromise = status.isPromise;
}

void MeasuringStatus::endPromise()
{
    // How many were saved stays true.
    if (m_isPromise)
        say(m_messageDetail);
}

void MeasuringStatus::refresh()
{
    if (!m_isRefreshing)
        m_tasks.own(refreshAll(m_tasks.token()));
}

Task<void> MeasuringStatus::refreshAll(std::stop_token stop)
{
    m_isRefreshing = true;
    say(QString());
    Q_EMIT refreshRequested();
    std::optional<HistoryRefresh> end;
    try {
        end = co_await m_refreshes.refreshStale(m_appInView, stop);
    } catch (const Cancelled &) {
        // By stop(), which has said so, or with this object.
        throwIfStopped(stop);
    }
    m_isRefreshing = false;
    Q_EMIT changed();
    if (!end)
        co_return;
    if (!end->failure)
        say(tr("Rankings are up to date."));
    Q_EMIT refreshEnded(*end);
}

void MeasuringStatus::showOtherWork(const std::optional<StatusBar::Work> &work)
{
    m_otherWork = work;
    Q_EMIT changed();
}

void MeasuringStatus::stop()
{
    if (m_otherWork) {
        Q_EMIT otherStopRequested();
        return;
    }
    Q_EMIT stopRequested();
    m_refreshes.stop();
    say(tr("Stopped. Refresh measures what is left."));
}

} // namespace veltrix
