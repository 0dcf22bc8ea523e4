// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/button.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/pressable.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

/// As the toolkit reads "&": before the letter of a short cut, and twice for itself.
QString withoutMarks(const QString &marked)
{
    QString plain;
    for (qsizetype i = 0; i < marked.size(); ++i) {
        if (marked[i] == u'&' && ++i == marked.size())
            break;
        plain += marked[i];
    }
    return plain;
}

} // namespace

ButtonGeometry layoutButton(const QRectF &rect, qreal symbolSize, qreal textWidth,
                            Qt::LayoutDirection direction)
{
    const bool both = symbolSize > 0 && textWidth > 0;
    const qreal gap = both ? spacing::s : 0;
    const qreal text = std::min(textWidth, std::max(0.0, rect.width() - symbolSize - gap));
    qreal x = rect.x() + (rect.width() - symbolSize - gap - text) / 2;
    const auto mirrored = [&](QRectF part) {
        if (direction == Qt::RightToLeft)
            part.moveLeft(rect.left() + rect.right() - part.right());
        return part;
    };
    ButtonGeometry geometry;
    if (symbolSize > 0)
        geometry.symbol =
            mirrored(QRectF(x, rect.center().y() - symbolSize / 2, symbolSize, symbolSize));
    x += symbolSize + gap;
    if (textWidth > 0)
        geometry.text = mirrored(QRectF(x, rect.y(), text, rect.height()));
    return geometry;
}

Button::Button(Kind kind, const QString &symbol, const QString &text, QWidget *parent)
    : QPushButton(text, parent), m_kind(kind), m_symbol(symbol)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setAutoDefault(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

Button::Button(Kind kind, const QString &text, QWidget *parent)
    : Button(kind, QString(), text, parent)
{
}

void Button::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    updateGeometry();
    update();
}

void Button::setKind(Kind kind)
{
    m_kind = kind;
    updateGeometry();
    update();
}

void Button::setCompact(bool isCompact)
{
    if (m_isCompact == isCompact)
        return;
    m_isCompact = isCompact;
    updateGeometry();
    update();
}

bool Button::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && plainText() != text()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text(), this);
        return true;
    }
    return QPushButton::event(event);
}

QFont Button::labelFont() const
{
    return fontFor(TextStyle::BodyMedium, font());
}

int Button::symbolSize() const
{
    if (m_symbol.isEmpty())
        return 0;
    return qRound(controlHeight(font()) * 16.0 / 30.0);
}

QString Button::plainText() const
{
    if (m_isCompact && !m_symbol.isEmpty())
        return {};
    return withoutMarks(text());
}

int Button::savedByCompact() const
{
    return m_symbol.isEmpty() ? 0 : sizeWith(withoutMarks(text())).width() - sizeWith({}).width();
}

QSize Button::sizeHint() const
{
    return sizeWith(plainText());
}

QSize Button::sizeWith(const QString &text) const
{
    const int height = controlHeight(font());
    const int textWidth = int(std::ceil(QFontMetricsF(labelFont()).horizontalAdvance(text)));
    if (textWidth == 0)
        return {height, height};
    const int content = textWidth + symbolSize() + (m_symbol.isEmpty() ? 0 : spacing::s);
    const int padding = m_kind == Kind::Link ? spacing::xs : spacing::m + 1;
    return {content + 2 * padding, height};
}

QSize Button::minimumSizeHint() const
{
    return sizeHint();
}

Button::Colors Button::colors(const Tokens &tokens) const
{
    const bool hovered = underMouse() && isEnabled();
    const bool pressed = isDown() || isChecked();
    const QColor resting = isEnabled() ? tokens[Token::Text] : tokens[Token::Secondary];
    const Token under = pressed ? Token::Selected : Token::Hover;
    const bool lit = hovered || pressed;
    switch (m_kind) {
    case Kind::Standard:
        return {lit ? tokens[under] : tokens[Token::Surface], tokens[Token::Hairline], resting};
    case Kind::Primary:
    case Kind::Destructive: {
        const Token token = m_kind == Kind::Primary ? Token::Accent : Token::Red;
        if (!isEnabled())
            return {tokens[Token::Hover], tokens[Token::Hairline], tokens[Token::Secondary]};
        QColor fill = tokens[token];
        if (lit)
            fill = composed(tokens.tint(Token::Text), fill);
        return {fill, Qt::transparent, tokens.onAccent()};
    }
    case Kind::Link:
        return {lit ? tokens[under] : QColor(Qt::transparent), Qt::transparent,
                isEnabled() ? tokens[Token::Accent] : tokens[Token::Secondary]};
    case Kind::Plain:
        return {lit ? tokens[under] : QColor(Qt::transparent), Qt::transparent,
                lit ? tokens[Token::Text] : tokens[Token::Secondary]};
    }
    Q_UNREACHABLE();
}

void Button::paintEvent(QPaintEvent *)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    const Tokens tokens = Tokens::of(this);
    const Colors painted = colors(tokens);
    QPainter painter(this);
    drawRoundedRect(painter, rect(), radius::control, painted.fill, painted.line);

    const QFont label = labelFont();
    const QFontMetricsF metrics(label);
    const QString shown = plainText();
    const int padding = shown.isEmpty() ? 0 : spacing::xs;
    const ButtonGeometry geometry =
        layoutButton(QRectF(rect()).adjusted(padding, 0, -padding, 0), symbolSize(),
                     std::ceil(metrics.horizontalAdvance(shown)), layoutDirection());
    if (!m_symbol.isEmpty())
        drawSymbol(painter, geometry.symbol, m_symbol, painted.content);
    painter.setFont(label);
    painter.setPen(painted.content);
    painter.drawText(geometry.text, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     metrics.elidedText(shown, Qt::ElideRight, geometry.text.width() + 1));
    if (showsFocus(option)) {
        const bool filled = m_kind == Kind::Primary || m_kind == Kind::Destructive;
        if (filled)
            drawFocusRing(painter, QRectF(rect()).adjusted(2, 2, -2, -2), radius::control - 2,
                          tokens.onAccent());
        else
            drawFocusRing(painter, rect(), radius::control, tokens[Token::Accent]);
    }
}

void Button::keyPressEvent(QKeyEvent *event)
{
    if (pressByEnter(*this, *event))
        return;
    // Arrows choose among exclusive buttons. Else they are for the list or page around.
    if (event->key() == Qt::Key_Space || autoExclusive() || group())
        QPushButton::keyPressEvent(event);
    else
        event->ignore();
}

void Button::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QPushButton::changeEvent(event);
}

} // namespace veltrix
