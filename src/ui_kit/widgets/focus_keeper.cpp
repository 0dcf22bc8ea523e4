// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/focus_keeper.h"

#include "ui_kit/accessibility/cover.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace veltrix
{

namespace
{

bool canHoldFocus(const QWidget *widget)
{
    return widget->isVisible() && widget->isEnabled();
}

} // namespace

FocusKeeper::FocusKeeper(QWidget *scope, std::function<void()> goHome)
    : QObject(scope), m_scope(scope), m_goHome(std::move(goHome))
{
    connect(qApp, &QApplication::focusChanged, this, &FocusKeeper::followFocus);
}

FocusKeeper *FocusKeeper::of(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (auto *keeper = widget->findChild<FocusKeeper *>({}, Qt::FindDirectChildrenOnly))
            return keeper;
    }
    return nullptr;
}

bool FocusKeeper::keep()
{
    QWidget *focused = QApplication::focusWidget();
    if (!focused || !m_scope->isAncestorOf(focused) || canHoldFocus(focused))
        return false;
    takeHome(focused);
    return true;
}

void FocusKeeper::leave(const QWidget *part)
{
    QWidget *focused = QApplication::focusWidget();
    if (focused && (focused == part || part->isAncestorOf(focused)))
        takeHome(focused);
}

void FocusKeeper::takeHome(QWidget *from)
{
    forget();
    m_goHome();
    m_home = QApplication::focusWidget();
    if (!from || !m_home || m_home == from)
        return;
    m_vanished = from;
    m_vanishedName = from->accessibleName();
    m_vanished->installEventFilter(this);
    m_home->installEventFilter(this);
}

void FocusKeeper::forget()
{
    for (QWidget *watched : {m_vanished.data(), m_home.data()}) {
        if (watched)
            watched->removeEventFilter(this);
    }
    m_vanished = nullptr;
    m_home = nullptr;
}

QWidget *FocusKeeper::resumePoint() const
{
    return m_home && m_home == QApplication::focusWidget() ? m_vanished.data() : nullptr;
}

void FocusKeeper::followFocus(QWidget *old, QWidget *now)
{
    if (now || !old)
        return;
    // Deleted, or disabled together with what is around it. A window that is not active has no
    // focus to keep.
    QMetaObject::invokeMethod(
        this,
        [this] {
            const QWidget *cover = coverOf(m_scope->window());
            const bool isOnTop = !cover || cover == m_scope;
            if (!QApplication::focusWidget() && isOnTop && m_scope->isVisible() &&
                QApplication::activeWindow() == m_scope->window())
                takeHome(nullptr);
        },
        Qt::QueuedConnection);
}

void FocusKeeper::giveBack()
{
    const bool isUnmoved = m_home && m_home == QApplication::focusWidget();
    const bool isSame =
        m_vanished && canHoldFocus(m_vanished) && m_vanished->accessibleName() == m_vanishedName;
    if (!isUnmoved || !isSame || m_home->focusPolicy() != Qt::NoFocus)
        return;
    QWidget *returned = m_vanished;
    forget();
    returned->setFocus(Qt::OtherFocusReason);
}

bool FocusKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_vanished &&
        (event->type() == QEvent::Show || event->type() == QEvent::EnabledChange))
        QMetaObject::invokeMethod(this, &FocusKeeper::giveBack, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

} // namespace veltrix
