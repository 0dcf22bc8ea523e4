// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/listing/similar_apps_panel.h"

#include "ui_kit/widgets/app_row_list.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/text_label.h"

namespace veltrix
{

SimilarAppsPanel::SimilarAppsPanel(SimilarApps &similar, ArtworkImages &images, QWidget *parent)
    : QWidget(parent), m_similar(similar),
      m_message(new TextLabel(TextStyle::Body, TextLabel::Tone::Secondary)),
      m_failure(Banner::makeFailureCard(QStringLiteral("similarFailure"), tr("Try again"))),
      m_rows(new AppRowList(QStringLiteral("similarApp"), AppRowLook::Flush,
                            AppRowList::Ranks::Hidden, images))
{
    setObjectName(QStringLiteral("similarPanel"));
    m_message->setObjectName(QStringLiteral("similarMessage"));
    auto *layout = makeColumn(spacing::s, this);
    layout->addWidget(makeHeading(tr("Similar Apps")));
    layout->addWidget(m_message);
    layout->addWidget(m_failure);
    layout->addWidget(m_rows);
    connect(&m_similar, &SimilarApps::changed, this, &SimilarAppsPanel::showState);
    connect(m_failure, &Banner::actionTriggered, &m_similar, &SimilarApps::retry);
    connect(m_rows, &AppRowList::pressed, this, &SimilarAppsPanel::opened);
    showState();
}

void SimilarAppsPanel::setOwnApp(std::optional<std::int64_t> trackId)
{
    m_rows->setOwnApp(trackId);
}

void SimilarAppsPanel::setFailureTold(bool isTold)
{
    m_isFailureTold = isTold;
    showState();
}

void SimilarAppsPanel::showState()
{
    const QList<ITunesAppResult> *found = m_similar.state().value();
    const QString error = m_similar.state().error();
    m_rows->setApps(found ? *found : QList<ITunesAppResult>());
    m_failure->setMessage(m_isFailureTold ? QString() : error);
    if (found)
        m_message->setText(tr("No similar apps found yet."));
    else
        m_message->setText(m_isFailureTold ? tr("Similar apps couldn't be loaded.")
                                           : tr("Finding apps…"));
    m_message->setAccessibleName(m_message->text());
    m_message->setVisible(found ? found->isEmpty() : error.isEmpty() || m_isFailureTold);
}

} // namespace veltrix
