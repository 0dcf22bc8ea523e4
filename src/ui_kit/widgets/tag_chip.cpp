// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/tag_chip.h"

#include "model/text_folding.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace veltrix
{

namespace
{

constexpr qreal corner = 5;
constexpr qreal sidePadding = 7;
constexpr qreal dotGap = 5;
/// Between chips.
constexpr qreal chipGap = 4;
constexpr qreal moreGap = 4;

constexpr std::array tagTokens{Token::Accent, Token::Teal, Token::Orange,
                               Token::Pink,   Token::Blue, Token::Green};

/// 32-bit FNV-1a: a hash that is the same in every run and every build.
std::uint32_t stableHash(const QByteArray &bytes)
{
    std::uint32_t hash = 2166136261U;
    for (const char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 16777619U;
    }
    return hash;
}

QFont chipFont(const QFont &base)
{
    return fontFor(TextStyle::Secondary, base);
}

qreal dotSide(const QFontMetricsF &metrics)
{
    return std::round(metrics.height() * 7.0 / 15.0);
}

qreal chipHeight(const QFontMetricsF &metrics)
{
    return std::round(metrics.height() * 20.0 / 15.0);
}

qreal chipWidth(const QString &text, const QFontMetricsF &metrics)
{
    return 2 * sidePadding + dotSide(metrics) + dotGap + std::ceil(metrics.horizontalAdvance(text));
}

QString moreText(int count)
{
    return u'+' + QLocale().toString(count);
}

/// The side of a × in a chip.
qreal crossSide(const QFont &base)
{
    return std::round(QFontMetricsF(chipFont(base)).height() * 10.0 / 15.0);
}

/// The width of a × with the room around it.
int crossWidth(const QFont &base)
{
    return int(std::ceil(crossSide(base) + sidePadding + dotGap));
}

void drawDot(QPainter &painter, const QRectF &place, const QColor &color)
{
    drawRoundedRect(painter, place, place.height() / 2, color);
}

} // namespace

Token tagToken(const QString &name)
{
    return tagTokens[stableHash(foldedCase(name).toUtf8()) % tagTokens.size()];
}

TagChip TagChip::of(const QString &name)
{
    return {shownLine(name), tagToken(name)};
}

QList<TagChip> TagChip::of(const QStringList &names)
{
    QList<TagChip> chips;
    chips.reserve(names.size());
    for (const QString &name : names)
        chips.append(of(name));
    return chips;
}

QSizeF tagChipSize(const TagChip &chip, const QFont &base)
{
    const QFontMetricsF metrics(chipFont(base));
    return {chipWidth(chip.text, metrics), chipHeight(metrics)};
}

void paintTagChip(QPainter &painter, const QRectF &rect, const TagChip &chip, const Tokens &tokens,
                  const QFont &base)
{
    const QFont font = chipFont(base);
    const QFontMetricsF metrics(font);
    const qreal height = chipHeight(metrics);
    const QRectF place(rect.x(), std::round(rect.center().y() - height / 2),
                       std::min(rect.width(), chipWidth(chip.text, metrics)), height);
    drawRoundedRect(painter, place, corner, tokens.tint(chip.token));
    const qreal side = dotSide(metrics);
    const QRectF dot(place.x() + sidePadding, place.center().y() - side / 2, side, side);
    drawDot(painter, dot, tokens[chip.token]);
    const QRectF text(dot.right() + dotGap, place.y(),
                      place.right() - sidePadding - dot.right() - dotGap, height);
    painter.save();
    painter.setFont(font);
    painter.setPen(tokens[Token::Text]);
    painter.drawText(text,
                     Qt::AlignVCenter | Qt::AlignLeft | Qt::AlignAbsolute | Qt::TextSingleLine,
                     metrics.elidedText(chip.text, Qt::ElideRight, text.width() + 0.5));
    painter.restore();
}

TagRowGeometry layoutTagRow(const QRectF &rect, const QList<TagChip> &chips, const QFont &base)
{
    const QFontMetricsF metrics(chipFont(base));
    const auto widthOfMore = [&](int count) {
        return count == 0 ? 0.0 : moreGap + std::ceil(metrics.horizontalAdvance(moreText(count)));
    };
    TagRowGeometry geometry;
    const int count = int(chips.size());
    qreal x = rect.x();
    for (int i = 0; i < count; ++i) {
        const qreal left = i == 0 ? x : x + chipGap;
        const qreal room = rect.right() - widthOfMore(count - i - 1) - left;
        const qreal wanted = chipWidth(chips[i].text, metrics);
        if (i > 0 && wanted > room)
            break;
        const qreal width = std::max(0.0, std::min(wanted, room));
        geometry.chips.append(QRectF(left, rect.y(), width, rect.height()));
        x = left + width;
    }
    geometry.moreCount = count - int(geometry.chips.size());
    if (geometry.moreCount > 0)
        geometry.more = QRectF(x + moreGap, rect.y(), rect.right() - x - moreGap, rect.height());
    return geometry;
}

void paintTagRow(QPainter &painter, const QRectF &rect, const QList<TagChip> &chips,
                 const Tokens &tokens, const QFont &base)
{
    const TagRowGeometry geometry = layoutTagRow(rect, chips, base);
    for (qsizetype i = 0; i < geometry.chips.size(); ++i)
        paintTagChip(painter, geometry.chips[i], chips[i], tokens, base);
    if (geometry.moreCount == 0)
        return;
    painter.save();
    painter.setFont(chipFont(base));
    painter.setPen(tokens[Token::Secondary]);
    painter.drawText(geometry.more, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     moreText(geometry.moreCount));
    painter.restore();
}

RemovableTag::RemovableTag(const QString &name, QWidget *parent)
    : Pressable(parent), m_name(name), m_chip(TagChip::of(name))
{
    setAccessibleName(tr("%1, remove").arg(m_chip.text));
    setToolTip(m_chip.text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::ArrowCursor);
    setMouseTracking(true);
}

QSize RemovableTag::sizeHint() const
{
    const QSizeF chip = tagChipSize(m_chip, font());
    return {int(std::ceil(chip.width() - sidePadding)) + crossWidth(font()),
            int(std::ceil(chip.height()))};
}

QSize RemovableTag::minimumSizeHint() const
{
    return {2 * crossWidth(font()), sizeHint().height()};
}

QRect RemovableTag::crossRect() const
{
    const int cross = crossWidth(font());
    return QStyle::visualRect(layoutDirection(), rect(),
                              QRect(width() - cross, 0, cross, height()));
}

bool RemovableTag::hitButton(const QPoint &position) const
{
    return crossRect().contains(position);
}

bool RemovableTag::event(QEvent *event)
{
    if (event->type() == QEvent::MouseMove)
        setCursor(crossRect().contains(static_cast<QMouseEvent *>(event)->position().toPoint())
                      ? Qt::PointingHandCursor
                      : Qt::ArrowCursor);
    return Pressable::event(event);
}

void RemovableTag::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    // One ground under the name and the ×.
    drawRoundedRect(painter, rect(), corner, tokens.tint(m_chip.token));
    const QRect cross = crossRect();
    const QFont font = chipFont(this->font());
    const QFontMetricsF metrics(font);
    const qreal side = dotSide(metrics);
    const bool isMirrored = isRightToLeft();
    const qreal dotX = isMirrored ? width() - sidePadding - side : sidePadding;
    drawDot(painter, QRectF(dotX, height() / 2.0 - side / 2, side, side), tokens[m_chip.token]);
    const QRectF text =
        isMirrored ? QRectF(QPointF(cross.right() + 1, 0), QPointF(dotX - dotGap, height()))
                   : QRectF(QPointF(dotX + side + dotGap, 0), QPointF(cross.left(), height()));
    painter.setFont(font);
    painter.setPen(tokens[Token::Text]);
    const Qt::Alignment alignment =
        Qt::AlignVCenter | Qt::AlignAbsolute | (isMirrored ? Qt::AlignRight : Qt::AlignLeft);
    painter.drawText(text, int(alignment) | int(Qt::TextSingleLine),
                     metrics.elidedText(m_chip.text, Qt::ElideRight, text.width() + 0.5));
    const qreal crossLength = crossSide(this->font());
    QRectF place(0, 0, crossLength, crossLength);
    place.moveCenter(QRectF(cross).center());
    drawSymbol(painter, place, QStringLiteral("xmark"),
               tokens[isHovered() ? Token::Text : Token::Secondary]);
    paintFocusRing(painter, corner);
}

void RemovableTag::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete)
        click();
    else
        Pressable::keyPressEvent(event);
}

} // namespace veltrix
