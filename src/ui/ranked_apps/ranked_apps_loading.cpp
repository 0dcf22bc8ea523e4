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

RankedAppsState::Screen RankedAppsState::screen() const
{
    if (hasResults())
        return Screen::List;
    if (isLoading)
        return Screen::Loading;
    return errorMessage ? Screen::Failed : Screen::Empty;
}

QString RankedAppsState::savedText(const QLocale &locale, const QTimeZone &zone) const
{
    if (!savedDate)
        return {};
    const QString text = Texts::tr("Results from %1").arg(dateTimeText(*savedDate, locale, zone));
    return isLoading ? text + Texts::tr(" · Refreshing…") : text;
}

QString RankedAppsState::failureText() const
{
    if (!errorMessage || !hasResults())
        return {};
    return Texts::tr("Showing saved results. %1").arg(*errorMessage);
}

QString RankedAppsState::countText() const
{
    return Texts::tr("Showing %1 of %2 results").arg(shown()).arg(results.size());
}

QString RankedAppsState::moreText() const
{
    return Texts::tr("View more (%1)").arg(more());
}

RankedAppsLoading::RankedAppsLoading(Source source, QObject *parent)
    : QObject(parent), m_source(std::move(source))
{
}

RankedAppsLoading::~RankedAppsLoading() = default;

void RankedAppsLoading::start()
{
    m_tasks.stop();
    if (const std::optional<SavedResults> saved = m_source.saved();
        saved && !saved->results.isEmpty()) {
        m_state.results = saved->results;
        m_state.savedDate = saved->fetchedAt;
    }
    // Over a list, the message stays until there is an answer, so that nothing jumps and its button
    // keeps the focus.
    if (!m_state.hasResults())
        m_state.errorMessage.reset();
    m_state.isLoading = true;
    Q_EMIT changed();
    m_tasks.own(load(m_tasks.token()));
}

void RankedAppsLoading::retry()
{
    ++m_state.attempt;
    start();
}

void RankedAppsLoading::showMore()
{
    m_state.visibleCount += RankedAppsState::page;
    Q_EMIT changed();
}

Task<void> RankedAppsLoading::load(std::stop_token stop)
{
    try {
        const QList<ITunesAppResult> results = co_await m_source.load(stop);
        throwIfStopped(stop);
        m_state.results = results;
        m_state.savedDate.reset();
        m_state.errorMessage.reset();
    } catch (const Error &error) {
        m_state.errorMessage = error.description();
    }
    throwIfStopped(stop);
    m_state.isLoading = false;
    Q_EMIT changed();
}

} // namespace veltrix
