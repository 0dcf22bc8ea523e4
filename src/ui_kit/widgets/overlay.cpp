// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/overlay.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/accessibility/cover.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/focus_keeper.h"
#include "ui_kit/widgets/layouts.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollArea>
#include <QStyleOption>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int sheetMarginVertical = 40;
constexpr int leastSheetMarginVertical = 12;
/// A window of this height, or a lower one, leaves sheets all the room it can.
constexpr int lowWindow = 560;
constexpr int sheetMarginHorizontal = 24;
constexpr int popoverMargin = 8;
constexpr int popoverGap = 6;

bool takesFocusByTab(const QWidget *widget)
{
    return (widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled() && widget->isVisible() &&
           !widget->focusProxy();
}

} // namespace

QRect layoutSheet(const QRect &window, QSize preferred)
{
    const int vertical = std::clamp(leastSheetMarginVertical + (window.height() - lowWindow) / 4,
                                    leastSheetMarginVertical, sheetMarginVertical);
    const QSize room(std::max(0, window.width() - 2 * sheetMarginHorizontal),
                     std::max(0, window.height() - 2 * vertical));
    const QSize size = preferred.boundedTo(room);
    return {window.x() + (window.width() - size.width()) / 2,
            window.y() + (window.height() - size.height()) / 2, size.width(), size.height()};
}

QRect layoutPopover(const QRect &window, const QRect &anchor, QSize preferred)
{
    const QRect room =
        window.adjusted(popoverMargin, popoverMargin, -popoverMargin, -popoverMargin);
    const QSize size = preferred.boundedTo(room.size());
    int x = anchor.right() + 1 - size.width();
    x = std::clamp(x, room.left(), std::max(room.left(), room.right() + 1 - size.width()));
    int y = anchor.bottom() + 1 + popoverGap;
    const int above = anchor.top() - popoverGap - size.height();
    if (y + size.height() > room.bottom() + 1 && above >= room.top())
        y = above;
    y = std::clamp(y, room.top(), std::max(room.top(), room.bottom() + 1 - size.height()));
    return {x, y, size.width(), size.height()};
}

Overlay *Overlay::open(Kind kind, QWidget *opener, QWidget *content)
{
    return new Overlay(kind, opener->window(), opener, content);
}

Overlay::Overlay(Kind kind, QWidget *window, QWidget *opener, QWidget *content)
    : QWidget(window), m_kind(kind), m_opener(opener), m_content(content),
      m_focusBefore(QApplication::focusWidget()), m_keeper(new FocusKeeper(this, [this] {
          if (m_content)
              m_content->setFocus(Qt::OtherFocusReason);
      }))
{
    setAccessibleRole(this, QAccessible::Dialog);
    setObjectName(kind == Kind::Sheet ? QStringLiteral("sheet") : QStringLiteral("popover"));
    setAccessibleName(content->accessibleName());
    setFocusPolicy(Qt::NoFocus);
    // What the content has chosen to start with; becoming a child makes it forget.
    QWidget *first = content->focusWidget();
    content->setParent(this);
    window->installEventFilter(this);
    place();
    content->show();
    show();
    raise();
    setCover(window, this);
    if (!first)
        first = nextStop(this, Step::Next);
    (first ? first : content)->setFocus(Qt::PopupFocusReason);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *now) { followFocus(now); });
}

Overlay::~Overlay()
{
    // The focus leaves the content as that is deleted, when this is no overlay any more.
    disconnect(qApp, nullptr, this, nullptr);
}

void Overlay::dismiss()
{
    if (!m_open)
        return;
    m_open = false;
    if (parentWidget())
        parentWidget()->removeEventFilter(this);
    setCover(window(), topOf(window()));
    const bool focusWasInside = isAncestorOf(QApplication::focusWidget());
    hide();
    if (focusWasInside && m_focusBefore)
        m_focusBefore->setFocus(Qt::PopupFocusReason);
    Q_EMIT dismissed();
    deleteLater();
}

Overlay *Overlay::of(QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (auto *overlay = qobject_cast<Overlay *>(widget))
            return overlay;
    }
    return nullptr;
}

Overlay *Overlay::topOf(const QWidget *window)
{
    // Children come in the order in which they lie over each other.
    Overlay *top = nullptr;
    for (auto *overlay : window->findChildren<Overlay *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (overlay->m_open)
            top = overlay;
    }
    return top;
}

void Overlay::followFocus(QWidget *now)
{
    update();
    // A part of the window may ask for the focus that does not know of the sheet over it.
    const bool isBehind = now && now->window() == window() && now != this && !isAncestorOf(now);
    if (isBehind && m_open && topOf(window()) == this && m_content)
        m_content->setFocus(Qt::OtherFocusReason);
}

bool Overlay::showsFocusRing() const
{
    QStyleOption option;
    option.initFrom(m_content);
    return m_content && m_content->focusPolicy() == Qt::NoFocus && showsFocus(option);
}

void Overlay::place()
{
    if (!m_content || !parentWidget())
        return;
    setGeometry(parentWidget()->rect());
    const QSize preferred = m_content->sizeHint().expandedTo(m_content->minimumSize());
    if (m_kind == Kind::Popover && m_opener) {
        const QRect anchor(m_opener->mapTo(window(), QPoint()), m_opener->size());
        m_card = layoutPopover(rect(), anchor, preferred);
    } else {
        m_card = layoutSheet(rect(), preferred);
    }
    m_content->setGeometry(m_card);
    update();
}

bool Overlay::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest)
        place();
    return QWidget::event(event);
}

bool Overlay::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}

void Overlay::dim(QPainter &painter) const
{
    const QColor scrim = Tokens::of(this)[Token::Scrim];
    QPainterPath undimmed;
    undimmed.addRect(rect());
    for (const auto *below :
         window()->findChildren<Overlay *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (below == this)
            break;
        if (!below->m_open)
            continue;
        const qreal corner = below->m_kind == Kind::Sheet ? radius::sheet : radius::card;
        if (below->m_kind == Kind::Sheet)
            undimmed.clear();
        undimmed.addRoundedRect(below->m_card, corner, corner);
    }
    undimmed.setFillRule(Qt::WindingFill);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(undimmed, scrim);
}

void Overlay::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    if (m_kind == Kind::Sheet)
        dim(painter);
    const qreal corner = m_kind == Kind::Sheet ? radius::sheet : radius::card;
    drawShadow(painter, m_card, corner, tokens[Token::Shadow]);
    drawRoundedRect(painter, m_card, corner, tokens[Token::Raised], tokens[Token::Hairline]);
    if (showsFocusRing())
        drawFocusRing(painter, QRectF(m_card).adjusted(-2, -2, 2, 2), corner + 2,
                      tokens[Token::Accent]);
}

void Overlay::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    if (m_kind == Kind::Popover && !m_card.contains(event->position().toPoint()))
        dismiss();
}

void Overlay::keyPressEvent(QKeyEvent *event)
{
    // Nothing reaches the window below.
    event->accept();
    if (event->key() == Qt::Key_Escape) {
        dismiss();
        return;
    }
    // From wherever the focus is, what can be scrolled is.
    for (QScrollArea *area : findChildren<QScrollArea *>()) {
        if (area->isVisible() && scrollByKey(*area, *event))
            return;
    }
}

void Overlay::wheelEvent(QWheelEvent *event)
{
    event->accept();
}

QWidget *Overlay::nextStop(QWidget *from, Step step) const
{
    const auto neighbour = [step](const QWidget *widget) {
        return step == Step::Next ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (QWidget *widget = neighbour(from); widget && widget != from; widget = neighbour(widget)) {
        if (isAncestorOf(widget) && takesFocusByTab(widget))
            return widget;
    }
    return nullptr;
}

bool Overlay::focusNextPrevChild(bool next)
{
    if (m_keeper->keep())
        return true;
    QWidget *from = m_keeper->resumePoint();
    if (!from)
        from = QApplication::focusWidget();
    if (!from || !isAncestorOf(from))
        from = this;
    QWidget *target = nextStop(from, next ? Step::Next : Step::Previous);
    if (target) {
        window()->setAttribute(Qt::WA_KeyboardFocusChange);
        target->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    }
    // Handled even without a target: the focus never leaves to the window below.
    return true;
}

} // namespace veltrix
