// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/load_failure.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/empty_state.h"

#include <QVBoxLayout>

namespace veltrix
{

LoadFailure::LoadFailure(QWidget *parent)
    : QWidget(parent), m_message(new EmptyState(QStringLiteral("researchFailure")))
{
    auto *back = new Button(Button::Kind::Link, tr("Back"));
    nameControl(back, QStringLiteral("researchFailureBack"), tr("Back"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addStretch(4);
    layout->addWidget(m_message);
    layout->addWidget(back, 0, Qt::AlignHCenter);
    layout->addStretch(5);
    connect(m_message, &EmptyState::actionTriggered, this, &LoadFailure::retryRequested);
    connect(back, &Button::clicked, this, &LoadFailure::backRequested);
}

void LoadFailure::setMessage(const QString &message)
{
    m_message->setContent({QStringLiteral("wifi.exclamationmark"), tr("Couldn't load app"), message,
                           tr("Try again")});
}

} // namespace veltrix
