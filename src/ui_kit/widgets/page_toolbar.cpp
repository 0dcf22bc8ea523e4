// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/page_toolbar.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/widgets/text_label.h"

#include <QHBoxLayout>

namespace veltrix
{

PageToolbar::PageToolbar(const QString &title, QWidget *parent)
    : QWidget(parent), m_leading(new QHBoxLayout), m_trailing(new QHBoxLayout),
      m_title(new TextLabel(TextStyle::Title, TextLabel::Tone::Text, title)),
      m_subtitle(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(spacing::l, 0, spacing::l, 1);
    layout->setSpacing(spacing::s);
    m_leading->setSpacing(spacing::s);
    m_trailing->setSpacing(spacing::s);
    layout->addLayout(m_leading);
    layout->addWidget(m_title);
    layout->addWidget(m_subtitle);
    layout->addStretch(1);
    layout->addLayout(m_trailing);
    setFixedHeight(controlHeight(font()) + 25);
    setTitle(title);
}

void PageToolbar::setTitle(const QString &title)
{
    m_title->setText(title);
    m_title->setVisible(!title.isEmpty());
}

void PageToolbar::setSubtitle(const QString &subtitle)
{
    m_subtitle->setText(subtitle);
}

void PageToolbar::addLeading(QWidget *control)
{
    m_leading->addWidget(control);
}

void PageToolbar::addTrailing(QWidget *control)
{
    // Controls that a page gets later still come before its content.
    QWidget *before = nullptr;
    if (QLayoutItem *last = m_trailing->itemAt(m_trailing->count() - 1))
        before = last->widget();
    m_trailing->addWidget(control);
    if (before)
        setTabOrder(before, control);
}

void PageToolbar::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    painter.fillRect(rect(), tokens[Token::Surface]);
    drawHorizontalHairline(painter, 0, width(), height() - 1, tokens[Token::Hairline]);
}

} // namespace veltrix
