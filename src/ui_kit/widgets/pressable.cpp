// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/pressable.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"

#include <QKeyEvent>
#include <QStyleOption>

namespace veltrix
{

bool pressByEnter(QAbstractButton &button, const QKeyEvent &event)
{
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (!isEnter || event.modifiers().testAnyFlags(~Qt::KeyboardModifiers(Qt::KeypadModifier)))
        return false;
    // The key that has opened a sheet may still be down.
    if (!event.isAutoRepeat())
        button.click();
    return true;
}

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
    if (pressByEnter(*this, *event))
        return;
    if (event->key() == Qt::Key_Space)
        QAbstractButton::keyPressEvent(event);
    else
        // Arrows scroll what is around; a button would take them to move the focus.
        event->ignore();
}

} // namespace veltrix
