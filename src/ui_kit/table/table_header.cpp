// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/table_header.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include <algorithm>
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
    connect(this, &QHeaderView::sectionResized, this, [this] {
        if (m_held >= 0)
            viewport()->update();
    });
}

void TableHeader::holdSection(int section)
{
    m_held = section;
    viewport()->update();
}

QRect TableHeader::sectionRect(int section) const
{
    QRect rect(sectionViewportPosition(section), 0, sectionSize(section), viewport()->height());
    if (section != m_held || rect.width() > viewport()->width() / 2)
        return rect;
    if (isRightToLeft())
        rect.moveRight(std::min(rect.right(), viewport()->width() - 1));
    else
        rect.moveLeft(std::max(rect.left(), 0));
    return rect;
}

QRect TableHeader::heldRect() const
{
    if (m_held < 0 || isSectionHidden(m_held))
        return {};
    const QRect rect = sectionRect(m_held);
    return rect.left() == sectionViewportPosition(m_held) ? QRect() : rect;
}

void TableHeader::paintHeldEdge(QPainter &painter, const QRect &held) const
{
    const int x = isRightToLeft() ? held.left() : held.right();
    painter.fillRect(QRect(x, held.top(), 1, held.height()), Tokens::of(this)[Token::Hairline]);
}

int TableHeader::sectionAt(const QPoint &position) const
{
    return heldRect().contains(position) ? m_held : logicalIndexAt(position);
}

bool TableHeader::isOnHeldHandle(const QPoint &position) const
{
    const int margin = style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this);
    const QRect held = heldRect();
    const int fromEnd = isRightToLeft() ? position.x() - held.left() : held.right() - position.x();
    return held.contains(position) && fromEnd < margin;
}

void TableHeader::mousePressEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    if (event->button() == Qt::LeftButton && heldRect().contains(position))
        m_heldPress = {position, sectionSize(m_held), isOnHeldHandle(position)};
    else
        QHeaderView::mousePressEvent(event);
}

void TableHeader::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    if (m_heldPress) {
        dragHeld(*event);
    } else if (event->buttons() == Qt::NoButton && heldRect().contains(position)) {
        if (isOnHeldHandle(position))
            setCursor(Qt::SplitHCursor);
        else
            unsetCursor();
    } else {
        QHeaderView::mouseMoveEvent(event);
    }
}

void TableHeader::dragHeld(const QMouseEvent &event)
{
    const QPoint moved = event.position().toPoint() - m_heldPress->position;
    if (m_heldPress->isOnHandle) {
        const int wider = isRightToLeft() ? -moved.x() : moved.x();
        resizeSection(m_held, std::max(minimumSectionSize(), m_heldPress->size + wider));
    } else if (moved.manhattanLength() >= QApplication::startDragDistance()) {
        // From its own place it is dragged as the others are.
        const QPointF pressed = m_heldPress->position;
        m_heldPress.reset();
        Q_EMIT ownPlaceWanted(sectionPosition(m_held));
        QMouseEvent press(QEvent::MouseButtonPress, pressed, viewport()->mapToGlobal(pressed),
                          Qt::LeftButton, Qt::LeftButton, event.modifiers());
        QHeaderView::mousePressEvent(&press);
        QMouseEvent move(QEvent::MouseMove, event.position(), event.globalPosition(), Qt::NoButton,
                         Qt::LeftButton, event.modifiers());
        QHeaderView::mouseMoveEvent(&move);
    }
}

void TableHeader::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_heldPress) {
        QHeaderView::mouseReleaseEvent(event);
        return;
    }
    const bool isClick =
        !m_heldPress->isOnHandle && heldRect().contains(event->position().toPoint());
    m_heldPress.reset();
    if (isClick)
        sortByHeld();
}

void TableHeader::sortByHeld()
{
    const bool isTurned =
        sortIndicatorSection() == m_held && sortIndicatorOrder() == Qt::AscendingOrder;
    setSortIndicator(m_held, isTurned ? Qt::DescendingOrder : Qt::AscendingOrder);
    Q_EMIT sectionClicked(m_held);
}

void TableHeader::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    if (!heldRect().contains(position))
        QHeaderView::mouseDoubleClickEvent(event);
    else if (isOnHeldHandle(position))
        Q_EMIT sectionHandleDoubleClicked(m_held);
    else
        Q_EMIT sectionDoubleClicked(m_held);
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
        const int section = sectionAt(help->pos());
        const auto textOf = [&](int role) {
            return model()->headerData(section, Qt::Horizontal, role).toString();
        };
        // Without a help of its own, a title that was cut is told whole.
        QString text = textOf(Qt::ToolTipRole);
        if (section >= 0 && text.isEmpty() && isElided(section))
            text = textOf(Qt::DisplayRole);
        QToolTip::showText(help->globalPos(), text, this);
        return true;
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
    // The toolkit has a colour of its own behind the last section.
    const QRect rest(length() - offset(), 0, viewport()->width(), height());
    line.fillRect(QStyle::visualRect(layoutDirection(), viewport()->rect(), rest),
                  tokens[Token::Surface]);
    if (const QRect held = heldRect(); !held.isEmpty()) {
        paintSection(&line, held, m_held);
        paintHeldEdge(line, held);
    }
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
