// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/first_frame.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

namespace veltrix
{

FirstFrame::FirstFrame(QWidget *window) : QObject(window), m_window(window)
{
    // The window itself gets no event of it where its children cover it.
    QCoreApplication::instance()->installEventFilter(this);
}

bool FirstFrame::eventFilter(QObject *object, QEvent *event)
{
    const auto *widget =
        event->type() == QEvent::Paint ? qobject_cast<const QWidget *>(object) : nullptr;
    if (widget && widget->window() == m_window) {
        QCoreApplication::instance()->removeEventFilter(this);
        // The event loop comes round when all of it is painted and flushed.
        QTimer::singleShot(0, this, &FirstFrame::shown);
    }
    return false;
}

} // namespace veltrix
