// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/failure_card.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"

#include <QHBoxLayout>

namespace veltrix
{

FailureCard::FailureCard(const QString &objectName, const QString &action, QWidget *parent)
    : Card(objectName, parent), m_text(new TextLabel(TextStyle::Body, TextLabel::Tone::Text))
{
    setAccessibleRole(this, QAccessible::AlertMessage);
    setTint(Token::Orange);
    m_text->setWrapping(TextLabel::Wrapping::Wrapped);
    auto *button = new Button(Button::Kind::Standard, QStringLiteral("arrow.clockwise"), action);
    nameControl(button, objectName + QStringLiteral("Action"), action);
    auto *line = new QHBoxLayout;
    line->setSpacing(spacing::m);
    line->addWidget(new SymbolView(QStringLiteral("exclamationmark.triangle"), Token::Orange));
    line->addWidget(m_text, 1);
    line->addWidget(button);
    content()->addLayout(line);
    connect(button, &Button::clicked, this, &FailureCard::actionTriggered);
    hide();
}

void FailureCard::setMessage(const QString &message)
{
    m_text->setText(message);
    setAccessibleName(message);
    setVisible(!message.isEmpty());
    if (message.isEmpty())
        return;
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace veltrix
