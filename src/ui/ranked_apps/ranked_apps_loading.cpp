// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ranked_apps/ranked_apps_loading.h"

#include "ui_kit/text/date_texts.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(RankedApps)
};

} // namespace

QList<ITunesAppResult> RankedAppsState::results() const
{
    return apps.value() ? apps.value()->results : QList<ITunesAppResult>();
}

QString RankedAppsState::savedText(const QLocale &locale, const QTimeZone &zone) const
{
    if (!apps.value() || !apps.value()->savedDate)
        return {};
    const QString date = dateTimeText(*apps.value()->savedDate, locale, zone);
    const QString text = Texts::tr("Results from %1").arg(date);
    return apps.isUnderWay() ? text + Texts::tr(" · Refreshing…") : text;
}

QString RankedAppsState::failureText() const
{
    if (apps.error().isEmpty() || results().isEmpty())
        return {};
    return Texts::tr("Showing saved results. %1").arg(apps.error());
}

QString RankedAppsState::countText() const
{
    return Texts::tr("Showing %1 of %2 results")
        .arg(QString::number(shown()), QString::number(results().size()));
}

QString RankedAppsState::moreText() const
{
    return Texts::tr("View more (%1)").arg(more());
}

RankedAppsLoading::RankedAppsLoading(Source source, QObject *parent)
    : QObject(parent), m_source(std::move(source))
{
    m_moment.setSingleShot(true);
    connect(&m_moment, &QTimer::timeout, this, &RankedAppsLoading::changed);
    connect(&m_apps, &LoaderSignals::changed, this, &RankedAppsLoading::changed);
}

RankedAppsState RankedAppsLoading::state() const
{
    return {m_apps.state(), m_visibleCount, m_attempt};
}

void RankedAppsLoading::start()
{
    m_tasks.stop();
    m_moment.start(m_source.moment);
    m_tasks.own(begin(m_tasks.token()));
}

Task<void> RankedAppsLoading::begin(std::stop_token stop)
{
    const std::optional<SavedResults> saved = co_await m_source.saved(stop);
    throwIfStopped(stop);
    m_moment.stop();
    std::optional<RankedApps> meanwhile;
    if (saved && !saved->results.isEmpty())
        meanwhile = RankedApps{saved->results, saved->fetchedAt};
    m_apps.refresh([load = m_source.load](std::stop_token asked) { return fresh(load, asked); },
                   meanwhile);
}

void RankedAppsLoading::retry()
{
    ++m_attempt;
    start();
}

void RankedAppsLoading::showMore()
{
    m_visibleCount += RankedAppsState::page;
    Q_EMIT changed();
}

Task<RankedApps> RankedAppsLoading::fresh(Loader<QList<ITunesAppResult>>::Ask load,
                                          std::stop_token stop)
{
    const QList<ITunesAppResult> results = co_await load(stop);
    co_return RankedApps{results, std::nullopt};
}

} // namespace veltrix
