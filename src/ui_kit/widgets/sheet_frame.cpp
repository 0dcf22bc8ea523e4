// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/sheet_frame.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/text_label.h"

#include <QPainter>
#include <QScrollArea>

namespace veltrix
{

namespace
{

constexpr int standardControlHeight = 30;

} // namespace

SheetFrame::SheetFrame(const QString &objectName, const QString &title, Body body, QSize preferred,
                       QWidget *parent)
    : QWidget(parent), m_preferred(preferred), m_header(new QWidget),
      m_title(new ElidedLabel(TextStyle::Title, TextLabel::Tone::Text, title)),
      m_subtitle(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_actions(makeRow(spacing::s))
{
    nameControl(this, objectName, title);
    m_title->setObjectName(objectName + QStringLiteral("Title"));
    m_subtitle->setObjectName(objectName + QStringLiteral("Subtitle"));
    m_subtitle->hide();
    auto *titles = makeColumn(1);
    titles->addWidget(m_title);
    titles->addWidget(m_subtitle);
    auto *header =
        makeRow(spacing::l, m_header, {spacing::xl, spacing::l, spacing::xl, spacing::l});
    header->addLayout(titles, 1);
    header->addLayout(m_actions);

    auto *content = new QWidget;
    m_body = makeColumn(spacing::l, content, {spacing::xl, spacing::l, spacing::xl, spacing::xl});
    auto *layout = makeColumn(0, this, {1, 1, 1, 1});
    layout->addWidget(m_header);
    if (body == Body::Fixed) {
        layout->addWidget(content, 1);
        return;
    }
    // The card below shows through, so that its round corners stay.
    m_scroll = makeScrollPage(objectName + QStringLiteral("Scroll"), title, content);
    layout->addWidget(m_scroll, 1);
    takeScrollBarFromMargin(*m_scroll, *m_body);
}

void SheetFrame::setPreferredSize(QSize preferred)
{
    m_preferred = preferred;
    updateGeometry();
}

QHBoxLayout *SheetFrame::footer()
{
    if (!m_footer) {
        m_footer = new QWidget;
        makeRow(spacing::s, m_footer, {spacing::xl, spacing::m + 1, spacing::xl, spacing::m});
        layout()->addWidget(m_footer);
    }
    return static_cast<QHBoxLayout *>(m_footer->layout());
}

void SheetFrame::setSubtitle(const QString &subtitle)
{
    m_subtitle->setText(subtitle);
    m_subtitle->setVisible(!subtitle.isEmpty());
}

void SheetFrame::addAction(QWidget *control)
{
    m_actions->insertWidget(0, control);
}

Button *SheetFrame::addCloseButton(const QString &objectName, const QString &symbol,
                                   const QString &text, const QString &accessibleName)
{
    auto *button =
        new Button(text.isEmpty() ? Button::Kind::Plain : Button::Kind::Primary, symbol, text);
    nameControl(button, objectName, accessibleName);
    if (text.isEmpty())
        button->setToolTip(accessibleName);
    m_actions->addWidget(button);
    connect(button, &Button::clicked, this, &SheetFrame::dismissed);
    return button;
}

QSize SheetFrame::sizeHint() const
{
    return m_preferred * controlHeight(font()) / standardControlHeight;
}

void SheetFrame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawHorizontalHairline(painter, 1, width() - 1, m_header->geometry().bottom(),
                           Tokens::of(this)[Token::Hairline]);
    if (m_footer)
        drawHorizontalHairline(painter, 1, width() - 1, m_footer->geometry().top(),
                               Tokens::of(this)[Token::Hairline]);
}

void openSheet(QWidget *opener, SheetFrame *sheet)
{
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, opener, sheet);
    QObject::connect(sheet, &SheetFrame::dismissed, overlay, &Overlay::dismiss);
}

} // namespace veltrix
