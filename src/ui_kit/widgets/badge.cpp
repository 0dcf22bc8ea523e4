// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/badge.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal sidePadding = 9;
constexpr qreal codePadding = 6;
constexpr qreal codeRadius = 4;
/// How much of the text's colour is in that of a badge, so that it can be read on every row.
constexpr float textShare = 0.28F;

QColor badgeText(const Tokens &tokens, Token token)
{
    QColor text = tokens[Token::Text];
    text.setAlphaF(textShare);
    return composed(text, tokens[token]);
}

Token tierToken(const QString &label)
{
    if (label == QLatin1String("Sweet Spot") || label == QLatin1String("Good Target"))
        return Token::Green;
    if (label == QLatin1String("Supporting"))
        return Token::Blue;
    if (label == QLatin1String("Worth Climbing"))
        return Token::Orange;
    return Token::Gray;
}

} // namespace

Badge targetBadge(const std::optional<OpportunityAssessment> &opportunity)
{
    if (!opportunity)
        return {QCoreApplication::translate("TargetBadge", "Refresh required"), Token::Gray};
    return {opportunity->label, tierToken(opportunity->label)};
}

QString targetBadgeHelp(const std::optional<OpportunityAssessment> &opportunity)
{
    if (opportunity)
        return {};
    return QCoreApplication::translate(
        "TargetBadge", "Refresh to calculate Target. Popularity, search results and a supported "
                       "storefront are required.");
}

BadgeGeometry layoutBadge(const QRectF &rect, const QFontMetricsF &metrics, const Badge &badge)
{
    const qreal height = std::round(metrics.height() * 22.0 / 15.0);
    const qreal wanted = std::ceil(metrics.horizontalAdvance(badge.text)) + 2 * sidePadding;
    const qreal width = std::min(wanted, rect.width());
    BadgeGeometry geometry;
    geometry.capsule = QRectF(rect.x(), std::round(rect.center().y() - height / 2), width, height);
    geometry.text = geometry.capsule.adjusted(sidePadding, 0, -sidePadding, 0);
    return geometry;
}

void paintBadge(QPainter &painter, const QRectF &rect, const Badge &badge, const Tokens &tokens,
                const QFont &base)
{
    const QFont font = fontFor(TextStyle::SecondarySemibold, base);
    const QFontMetricsF metrics(font);
    const BadgeGeometry geometry = layoutBadge(rect, metrics, badge);
    drawRoundedRect(painter, geometry.capsule, geometry.capsule.height() / 2,
                    tokens.tint(badge.token));
    painter.save();
    painter.setFont(font);
    painter.setPen(badgeText(tokens, badge.token));
    painter.drawText(geometry.text, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     metrics.elidedText(badge.text, Qt::ElideRight, geometry.text.width() + 0.5));
    painter.restore();
}

QSizeF codeBadgeSize(const QString &code, const QFont &base)
{
    const QFontMetricsF metrics(fontFor(TextStyle::SecondarySemibold, base));
    return {std::ceil(metrics.horizontalAdvance(code)) + 2 * codePadding,
            std::round(metrics.height() * 17.0 / 15.0)};
}

void paintCodeBadge(QPainter &painter, const QRectF &rect, const QString &code,
                    const Tokens &tokens, const QFont &base)
{
    drawRoundedRect(painter, rect, codeRadius, tokens.tint(Token::Gray));
    painter.save();
    painter.setFont(fontFor(TextStyle::SecondarySemibold, base));
    painter.setPen(badgeText(tokens, Token::Gray));
    painter.drawText(rect.adjusted(codePadding, 0, -codePadding, 0),
                     Qt::AlignVCenter | Qt::AlignLeft | Qt::AlignAbsolute | Qt::TextSingleLine,
                     code);
    painter.restore();
}

BadgeView::BadgeView(QWidget *parent) : QWidget(parent)
{
    setAccessibleRole(this, QAccessible::StaticText);
}

void BadgeView::setBadge(const Badge &badge)
{
    m_badge = badge;
    setAccessibleName(badge.text);
    updateGeometry();
    update();
}

QSize BadgeView::sizeHint() const
{
    const QFontMetricsF metrics(fontFor(TextStyle::SecondarySemibold, font()));
    return layoutBadge(QRectF(0, 0, 1000, 40), metrics, m_badge).capsule.size().toSize();
}

void BadgeView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintBadge(painter, rect(), m_badge, Tokens::of(this), font());
}

} // namespace veltrix
