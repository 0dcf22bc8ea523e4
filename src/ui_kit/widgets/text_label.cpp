// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/text_label.h"

#include <QApplication>
#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <cmath>

namespace veltrix
{

TextLabel::TextLabel(TextStyle style, Tone tone, const QString &text, QWidget *parent)
    : QLabel(text, parent), m_style(style)
{
    setTextFormat(Qt::PlainText);
    setTone(tone);
    applyFont();
}

void TextLabel::setWrapping(Wrapping wrapping)
{
    setWordWrap(wrapping == Wrapping::Wrapped);
}

void TextLabel::setTone(Tone tone)
{
    switch (tone) {
    case Tone::Text:
        setForegroundRole(QPalette::WindowText);
        break;
    case Tone::Secondary:
        setForegroundRole(QPalette::PlaceholderText);
        break;
    case Tone::Accent:
        setForegroundRole(QPalette::Link);
        break;
    case Tone::Red:
        setForegroundRole(QPalette::BrightText);
        break;
    }
}

void TextLabel::applyFont()
{
    // The widget's own font is the styled one already, so the body font is the application's.
    setFont(fontFor(m_style, QApplication::font()));
}

bool TextLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange)
        applyFont();
    return QLabel::event(event);
}

TextLabel *makeParagraph(TextStyle style, TextLabel::Tone tone, const QString &text,
                         const QString &objectName)
{
    auto *label = new TextLabel(style, tone, text);
    label->setObjectName(objectName);
    label->setWrapping(TextLabel::Wrapping::Wrapped);
    return label;
}

TextLabel *makeHeading(const QString &text)
{
    return new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, text);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 3, QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::isElided() const
{
    return QFontMetricsF(font()).horizontalAdvance(text()) > contentsRect().width() + 0.5;
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        if (isElided())
            QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text(), this);
        return true;
    }
    return TextLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QRect area = contentsRect();
    const QString shown =
        QFontMetricsF(font()).elidedText(text(), Qt::ElideRight, area.width() + 0.5);
    painter.drawText(area,
                     int(QStyle::visualAlignment(layoutDirection(), alignment())) |
                         int(Qt::TextSingleLine),
                     shown);
}

} // namespace veltrix
