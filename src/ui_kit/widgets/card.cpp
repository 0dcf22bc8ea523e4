// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/card.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/tool_tip_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/layouts.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

/// Strength of the hairline around a tinted card, in that token's colour.
constexpr float tintedLine = 0.28F;
constexpr float cardTintShare = 0.5F;

} // namespace

Card::Card(const QString &objectName, QWidget *parent)
    : QWidget(parent),
      m_content(makeColumn(spacing::s, this, {spacing::l, spacing::m, spacing::l, spacing::m}))
{
    setObjectName(objectName);
    setAccessibleRole(this, QAccessible::Grouping);
}

void Card::setTint(std::optional<Token> token)
{
    m_tint = token;
    update();
}

void Card::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paint(painter, rect(), m_tint, Tokens::of(this));
}

void Card::paint(QPainter &painter, const QRectF &place, std::optional<Token> token,
                 const Tokens &tokens)
{
    if (!token) {
        drawRoundedRect(painter, place, radius::card, Qt::transparent, tokens[Token::Hairline]);
        return;
    }
    QColor line = tokens[*token];
    line.setAlphaF(tintedLine);
    drawRoundedRect(painter, place, radius::card, fill(*token, tokens), line);
}

QColor Card::fill(Token token, const Tokens &tokens)
{
    QColor color = tokens.tint(token);
    color.setAlphaF(color.alphaF() * cardTintShare);
    return color;
}

TokenLabel::TokenLabel(TextStyle style, Token token, const QString &text, QWidget *parent)
    : TextLabel(style, Tone::Text, text, parent), m_token(token)
{
    applyColor();
}

void TokenLabel::setToken(Token token)
{
    m_token = token;
    applyColor();
}

void TokenLabel::applyColor()
{
    const QColor color = Tokens::of(this)[m_token];
    if (palette().color(QPalette::WindowText) == color)
        return;
    QPalette colored;
    colored.setColor(QPalette::WindowText, color);
    setPalette(colored);
}

bool TokenLabel::event(QEvent *event)
{
    const bool handled = TextLabel::event(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ParentChange)
        applyColor();
    return handled;
}

SymbolView::SymbolView(const QString &symbol, Token token, QWidget *parent)
    : QWidget(parent), m_symbol(symbol), m_token(token)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SymbolView::setSymbol(const QString &symbol, Token token)
{
    m_symbol = symbol;
    m_token = token;
    update();
}

QSize SymbolView::sizeHint() const
{
    const int side = qRound(controlHeight(font()) * 16.0 / 30.0);
    return {side, side};
}

void SymbolView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawSymbol(painter, rect(), m_symbol, Tokens::of(this)[m_token]);
}

QString Figure::text() const
{
    QString text = caption.endsWith(u':') ? caption : caption + u':';
    for (const QString &part : {value, unit}) {
        if (!part.isEmpty())
            text += u' ' + part;
    }
    return text;
}

FigureTile::FigureTile(const QString &objectName, QWidget *parent)
    : Card(objectName, parent), m_symbol(new SymbolView(QString(), Token::Secondary)),
      m_caption(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_largeValue(new TextLabel(TextStyle::Figure, TextLabel::Tone::Text)),
      m_value(new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text)),
      m_unit(new TextLabel(TextStyle::SecondarySemibold, TextLabel::Tone::Secondary))
{
    m_value->setWrapping(TextLabel::Wrapping::Wrapped);
    auto *head = makeRow(6);
    head->addWidget(m_symbol);
    head->addWidget(m_caption, 1);
    auto *line = makeRow(6);
    for (TextLabel *label : {m_largeValue, m_unit})
        line->addWidget(label, 0, Qt::AlignBaseline);
    line->addWidget(m_value, 1);
    line->addStretch(0);
    content()->setSpacing(1);
    content()->addLayout(head);
    content()->addLayout(line);
    content()->addStretch(1);
}

void FigureTile::setFigure(const Figure &figure)
{
    setAccessibleName(figure.text());
    setAccessibleDescription(figure.help);
    setToolTip(toolTipText(figure.help));
    m_symbol->setVisible(!figure.symbol.isEmpty());
    m_symbol->setSymbol(figure.symbol, Token::Secondary);
    m_caption->setText(figure.caption);
    m_largeValue->setText(figure.isLarge ? figure.value : QString());
    m_largeValue->setVisible(figure.isLarge);
    m_value->setText(figure.isLarge ? QString() : figure.value);
    m_unit->setText(figure.unit);
    m_unit->setVisible(!figure.unit.isEmpty());
}

Meter::Meter(Token token, QWidget *parent) : QWidget(parent), m_token(token)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Meter::setFraction(double fraction)
{
    m_fraction = std::clamp(fraction, 0.0, 1.0);
    update();
}

void Meter::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    const QRectF track = rect();
    drawRoundedRect(painter, track, track.height() / 2, tokens[Token::Hairline]);
    if (m_fraction <= 0)
        return;
    QRectF bar = track;
    bar.setWidth(std::max(track.height(), track.width() * m_fraction));
    if (isRightToLeft())
        bar.moveRight(track.right());
    drawRoundedRect(painter, bar, track.height() / 2, tokens[m_token]);
}

} // namespace veltrix
