// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/pressable.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"

#include <QKeyEvent>
#include <QStyleOption>

namespace veltrix
{

Pressable::Pressable(QWidget *parent) : QAbstractButton(parent)
{
    setAccessibleRole(this, QAccessible::Button);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
}

bool Pressable::showsFocusRing() const
{
    QStyleOption option;
    option.initFrom(this);
    return showsFocus(option);
}

void Pressable::paintFocusRing(QPainter &painter, qreal radius) const
{
    if (showsFocusRing())
        drawFocusRing(painter, rect(), radius, Tokens::of(this)[Token::Accent]);
}

void Pressable::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        click();
        break;
    case Qt::Key_Space:
        QAbstractButton::keyPressEvent(event);
        break;
    default:
        // Arrows scroll what is around; a button would take them to move the focus.
        event->ignore();
    }
}

} // namespace veltrix
