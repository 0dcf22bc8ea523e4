// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/table_header.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal arrowWidth = 6;
constexpr qreal arrowHeight = 4.5;
constexpr qreal arrowGap = 5;

void drawSortArrow(QPainter &painter, QPointF leftCentre, Qt::SortOrder order, const QColor &color)
{
    const qreal tip = order == Qt::AscendingOrder ? arrowHeight / 2 : -arrowHeight / 2;
    QPainterPath arrow;
    arrow.moveTo(leftCentre.x(), leftCentre.y() - tip);
    arrow.lineTo(leftCentre.x() + arrowWidth, leftCentre.y() - tip);
    arrow.lineTo(leftCentre.x() + arrowWidth / 2, leftCentre.y() + tip);
    arrow.closeSubpath();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(arrow, color);
}

} // namespace

TableHeader::TableHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
    setSectionsMovable(true);
    setHighlightSections(false);
    setSortIndicatorShown(true);
    setFirstSectionMovable(true);
    setMouseTracking(true);
}

QSize TableHeader::sizeHint() const
{
    return {QHeaderView::sizeHint().width(), controlHeight(font()) + 5};
}

void TableHeader::changeEvent(QEvent *event)
{
    QHeaderView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        Q_EMIT geometriesChanged();
}

QRect TableHeader::contentOf(const QRect &section)
{
    return section.adjusted(spacing::m, 0, -spacing::s, -1);
}

qreal TableHeader::arrowRoom(int logicalIndex) const
{
    return sortIndicatorSection() == logicalIndex ? arrowGap + arrowWidth : 0;
}

bool TableHeader::isElided(int logicalIndex) const
{
    const QFontMetricsF metrics(fontFor(TextStyle::SecondaryMedium, font()));
    const QRect section(0, 0, sectionSize(logicalIndex), height());
    const QString title = model()->headerData(logicalIndex, Qt::Horizontal).toString();
    return metrics.horizontalAdvance(title) > contentOf(section).width() - arrowRoom(logicalIndex);
}

bool TableHeader::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const int section = logicalIndexAt(help->pos());
        const auto textOf = [&](int role) {
            return model()->headerData(section, Qt::Horizontal, role).toString();
        };
        // Without a help of its own, a title that was cut is told whole.
        if (section >= 0 && textOf(Qt::ToolTipRole).isEmpty() && isElided(section)) {
            QToolTip::showText(help->globalPos(), textOf(Qt::DisplayRole), this);
            return true;
        }
    }
    return QHeaderView::viewportEvent(event);
}

void TableHeader::paintEvent(QPaintEvent *event)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), tokens[Token::Surface]);
    painter.end();
    QHeaderView::paintEvent(event);
    QPainter line(viewport());
    drawHorizontalHairline(line, 0, viewport()->width(), viewport()->height() - 1,
                           tokens[Token::Hairline]);
}

void TableHeader::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    const Tokens tokens = Tokens::of(this);
    painter->save();
    painter->fillRect(rect, tokens[Token::Surface]);
    const QFont label = fontFor(TextStyle::SecondaryMedium, font());
    const QFontMetricsF metrics(label);
    const bool sorted = sortIndicatorSection() == logicalIndex;
    const QRect content = contentOf(rect);
    const qreal arrow = arrowRoom(logicalIndex);
    const QString text =
        metrics.elidedText(model()->headerData(logicalIndex, Qt::Horizontal).toString(),
                           Qt::ElideRight, content.width() - arrow);
    const auto alignment = model()
                               ->headerData(logicalIndex, Qt::Horizontal, Qt::TextAlignmentRole)
                               .value<Qt::Alignment>();
    const qreal width = metrics.horizontalAdvance(text);
    const QRectF line = QStyle::alignedRect(
        layoutDirection(), alignment, {int(std::ceil(width + arrow)), content.height()}, content);
    painter->setFont(label);
    painter->setPen(tokens[sorted ? Token::Text : Token::Secondary]);
    painter->drawText(line, Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, text);
    if (sorted)
        drawSortArrow(*painter, {line.x() + width + arrowGap, line.center().y() + 0.5},
                      sortIndicatorOrder(), tokens[Token::Text]);
    painter->restore();
}

} // namespace veltrix
