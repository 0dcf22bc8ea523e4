// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/ranked_app_research_row.h"

#include "ui/listing/track_competitor_button.h"

namespace veltrix
{

RankedAppResearchRow::RankedAppResearchRow(const ResearchContext &context, int rank,
                                           const ITunesAppResult &result, const QString &country,
                                           const std::optional<QUuid> &appId, QWidget *parent)
    : ResearchAppRow(result, context.images, parent), m_country(country), m_appId(appId),
      m_track(new TrackCompetitorButton(context.store, Button::Kind::Link,
                                        TrackCompetitorButton::WhenTracked::Confirms, this))
{
    setObjectName(QStringLiteral("rankedAppRow%1").arg(rank));
    setTrailing(m_track);
    setRank(rank);
    setResult(result);
    connect(this, &ResearchAppRow::opened, this, [this] {
        if (const auto trackId = app().trackId)
            Q_EMIT detailsRequested({*trackId, m_country, m_appId});
    });
}

void RankedAppResearchRow::setResult(const ITunesAppResult &result)
{
    m_track->setApp(result, m_country, m_appId);
    setApp(result);
}

QString RankedAppResearchRow::openText() const
{
    return tr("View details for %1").arg(displayName(app()));
}

} // namespace veltrix
