// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/similar_apps_panel.h"

#include "ui_kit/widgets/failure_card.h"
#include "ui_kit/widgets/research_app_row.h"
#include "ui_kit/widgets/text_label.h"

#include <QVBoxLayout>

namespace veltrix
{

SimilarAppsPanel::SimilarAppsPanel(SimilarApps &similar, ArtworkImages &images, QWidget *parent)
    : QWidget(parent), m_similar(similar), m_images(images),
      m_message(new TextLabel(TextStyle::Body, TextLabel::Tone::Secondary)),
      m_failure(new FailureCard(QStringLiteral("similarFailure"), tr("Try again"))),
      m_rows(new QVBoxLayout)
{
    setObjectName(QStringLiteral("similarPanel"));
    m_message->setObjectName(QStringLiteral("similarMessage"));
    m_rows->setSpacing(0);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::s);
    layout->addWidget(
        new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, tr("Similar Apps")));
    layout->addWidget(m_message);
    layout->addWidget(m_failure);
    layout->addLayout(m_rows);
    connect(&m_similar, &SimilarApps::changed, this, &SimilarAppsPanel::showState);
    connect(m_failure, &FailureCard::actionTriggered, &m_similar, &SimilarApps::retry);
    showState();
}

void SimilarAppsPanel::showState()
{
    using Phase = SimilarApps::Phase;
    const Phase phase = m_similar.phase();
    while (QLayoutItem *item = m_rows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    int number = 0;
    for (const ITunesAppResult &app : m_similar.apps()) {
        auto *row = new ResearchAppRow(app, m_images);
        row->setObjectName(QStringLiteral("similarApp%1").arg(++number));
        connect(row, &ResearchAppRow::opened, this, [this, app] { Q_EMIT opened(app); });
        row->setEnds(ResearchAppRow::Ends::Flush);
        m_rows->addWidget(row);
    }
    m_failure->setMessage(phase == Phase::Failed ? m_similar.error() : QString());
    const bool isSearching = phase == Phase::Searching || phase == Phase::Idle;
    m_message->setText(isSearching ? tr("Finding apps…") : tr("No similar apps found yet."));
    m_message->setAccessibleName(m_message->text());
    m_message->setVisible(isSearching || (phase == Phase::Found && m_similar.apps().isEmpty()));
}

} // namespace veltrix
