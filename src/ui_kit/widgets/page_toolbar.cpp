// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/page_toolbar.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_label.h"

#include <QEvent>
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
    // A narrow window is no wider for its toolbar: that fits itself in.
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    setFixedHeight(controlHeight(font()) + 25);
    setTitle(title);
}

void PageToolbar::fit()
{
    QList<Button *> buttons;
    int texts = 0;
    for (auto *button : findChildren<Button *>(QString(), Qt::FindDirectChildrenOnly)) {
        // A storefront gives way by itself.
        if (button->isHidden() || qobject_cast<StorefrontPicker *>(button))
            continue;
        buttons.append(button);
        texts += button->savedByCompact();
    }
    const int subtitle = m_subtitle->sizeHint().width() + spacing::s;
    const int needed = layout()->minimumSize().width() + (m_isCompact ? texts : 0);
    const int withSubtitle = needed + (m_subtitle->isHidden() ? subtitle : 0);
    m_subtitle->setVisible(withSubtitle <= width());
    m_isCompact = withSubtitle - subtitle > width();
    for (Button *button : buttons)
        button->setCompact(m_isCompact);
}

bool PageToolbar::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    switch (event->type()) {
    case QEvent::FontChange:
        setFixedHeight(controlHeight(font()) + 25);
        break;
    case QEvent::Resize:
    case QEvent::LayoutRequest:
        fit();
        break;
    default:
        break;
    }
    return isHandled;
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
