// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/empty_state.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/text_label.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace veltrix
{

namespace
{

constexpr int widestText = 440;

}

EmptyState::Content EmptyState::Content::working(const QString &title)
{
    return {QString(), title, QString(), QString()};
}

EmptyState::Content EmptyState::Content::failed(const QString &title, const QString &error,
                                                const QString &action)
{
    return {QStringLiteral("wifi.exclamationmark"), title, error, action};
}

EmptyState::EmptyState(const QString &objectName, QWidget *parent)
    : QWidget(parent), m_symbolSpace(new QWidget),
      m_title(new TextLabel(TextStyle::Title, TextLabel::Tone::Text)),
      m_text(new TextLabel(TextStyle::Body, TextLabel::Tone::Secondary)),
      m_action(new Button(Button::Kind::Standard, QString()))
{
    setObjectName(objectName);
    setAccessibleRole(this, QAccessible::Grouping);
    for (TextLabel *label : {m_title, m_text}) {
        label->setAlignment(Qt::AlignCenter);
        label->setWrapping(TextLabel::Wrapping::Wrapped);
        label->setMaximumWidth(widestText);
    }
    m_symbolSpace->setFixedHeight(symbolSize());
    m_action->setObjectName(objectName + QStringLiteral("Action"));
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(spacing::s);
    layout->addStretch(4);
    layout->addWidget(m_symbolSpace);
    layout->addSpacing(spacing::s);
    // Rows, because a wrapped label that is aligned in a column loses its height.
    for (TextLabel *label : {m_title, m_text}) {
        auto *row = new QHBoxLayout;
        row->addStretch(1);
        row->addWidget(label, 1000);
        row->addStretch(1);
        layout->addLayout(row);
    }
    layout->addSpacing(spacing::s);
    layout->addWidget(m_action, 0, Qt::AlignHCenter);
    layout->addStretch(5);
    connect(m_action, &Button::clicked, this, &EmptyState::actionTriggered);
    setContent({});
}

void EmptyState::setContent(const Content &content)
{
    m_content = content;
    setAccessibleName(content.title);
    m_symbolSpace->setVisible(!content.symbol.isEmpty());
    m_title->setText(content.title);
    m_text->setText(content.text);
    m_text->setVisible(!content.text.isEmpty());
    // Hidden it keeps its name, so that one that returns is known to be the same.
    m_action->setVisible(!content.action.isEmpty());
    if (!content.action.isEmpty()) {
        m_action->setText(content.action);
        m_action->setAccessibleName(content.action);
    }
    update();
}

int EmptyState::symbolSize() const
{
    return controlHeight(font()) + 6;
}

void EmptyState::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        m_symbolSpace->setFixedHeight(symbolSize());
}

void EmptyState::paintEvent(QPaintEvent *)
{
    if (m_content.symbol.isEmpty())
        return;
    QPainter painter(this);
    drawSymbol(painter, m_symbolSpace->geometry(), m_content.symbol, Tokens::of(this)[Token::Gray]);
}

} // namespace veltrix
