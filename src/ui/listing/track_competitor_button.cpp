// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/track_competitor_button.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/app_facts.h"

namespace veltrix
{

namespace
{

/// The competitor record of that app in that storefront for the user's app, if it is tracked.
std::optional<TrackedCompetitor> trackedCompetitor(const ASOStore &store,
                                                   const std::optional<QUuid> &appId,
                                                   std::int64_t trackId, const QString &country)
{
    if (!appId)
        return std::nullopt;
    for (const TrackedCompetitor &competitor : store.competitors()) {
        if (competitor.trackId == trackId && competitor.appId == *appId &&
            competitor.country == country.toUpper())
            return competitor;
    }
    return std::nullopt;
}

} // namespace

TrackCompetitorButton::TrackCompetitorButton(ASOStore &store, Kind kind, WhenTracked whenTracked,
                                             QWidget *parent)
    : Button(kind, QStringLiteral("plus"), QString(), parent), m_store(store), m_kindToTrack(kind),
      m_whenTracked(whenTracked)
{
    setObjectName(QStringLiteral("trackCompetitor"));
    connect(this, &Button::clicked, this, &TrackCompetitorButton::toggle);
    connect(&m_store, &ASOStore::competitorsChanged, this, &TrackCompetitorButton::showState);
    showState();
}

void TrackCompetitorButton::setApp(const ITunesAppResult &app, const QString &country,
                                   const std::optional<QUuid> &appId)
{
    m_app = app;
    m_country = country;
    m_appId = appId;
    showState();
}

bool TrackCompetitorButton::isTracked() const
{
    return m_app.trackId && trackedCompetitor(m_store, m_appId, *m_app.trackId, m_country);
}

void TrackCompetitorButton::showState()
{
    const std::optional<AppProfile> owner = m_appId ? m_store.app(*m_appId) : std::nullopt;
    const bool isOffered = m_app.trackId && owner && owner->trackId != *m_app.trackId;
    // Without a parent yet, showing would open a window.
    if (!isOffered || parentWidget())
        setVisible(isOffered);
    const bool tracked = isTracked();
    setKind(tracked && m_kindToTrack == Kind::Primary ? Kind::Standard : m_kindToTrack);
    if (!tracked) {
        setText(tr("Track competitor"));
        setSymbol(QStringLiteral("plus"));
    } else if (m_whenTracked == WhenTracked::Untracks) {
        setText(tr("Untrack competitor"));
        setSymbol(QStringLiteral("checkmark"));
    } else {
        setText(tr("Tracking competitor"));
        setSymbol(QStringLiteral("checkmark"));
    }
    setAccessibleName(text());
    setAccessibleDescription(shownName(m_app));
    setEnabled(!tracked || m_whenTracked == WhenTracked::Untracks);
}

void TrackCompetitorButton::toggle()
{
    const auto tracked = m_app.trackId
                             ? trackedCompetitor(m_store, m_appId, *m_app.trackId, m_country)
                             : std::nullopt;
    if (tracked)
        m_store.removeCompetitor(tracked->id);
    else if (m_appId)
        m_store.addCompetitor(m_app, *m_appId, m_country);
}

} // namespace veltrix
