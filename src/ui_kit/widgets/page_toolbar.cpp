// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/page_toolbar.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_label.h"

#include <QEvent>
#include <QHBoxLayout>

#include <array>
#include <numeric>

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
    QList<Button *> storefronts;
    for (auto *button : findChildren<Button *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!button->isHidden())
            (qobject_cast<StorefrontPicker *>(button) ? storefronts : buttons).append(button);
    }
    const auto textsOf = [](const QList<Button *> &some) {
        return std::accumulate(some.begin(), some.end(), 0, [](int sum, const Button *button) {
            return sum + button->savedByCompact();
        });
    };
    const bool hasTitle = !m_title->text().isEmpty();
    const std::array savings{m_subtitle->sizeHint().width() + spacing::s, textsOf(buttons),
                             textsOf(storefronts),
                             hasTitle ? m_title->sizeHint().width() + spacing::s : 0};
    int needed = layout()->minimumSize().width();
    for (int i = 0; i < m_given; ++i)
        needed += savings[size_t(i)];
    m_given = 0;
    while (needed > width() && m_given < int(savings.size()))
        needed -= savings[size_t(m_given++)];
    m_subtitle->setVisible(m_given < 1);
    for (Button *button : buttons)
        button->setCompact(m_given >= 2);
    for (Button *button : storefronts)
        button->setCompact(m_given >= 3);
    m_title->setVisible(hasTitle && m_given < 4);
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
    m_title->setVisible(!title.isEmpty() && m_given < 4);
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
