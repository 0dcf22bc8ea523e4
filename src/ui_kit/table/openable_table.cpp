// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/openable_table.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace veltrix
{

void OpenableTable::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter)
        TallTable::keyPressEvent(event);
    else if (!event->isAutoRepeat() && currentIndex().isValid())
        Q_EMIT rowOpened(currentIndex().row());
}

void OpenableTable::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid())
        Q_EMIT rowOpened(index.row());
}

void OpenableTable::focusInEvent(QFocusEvent *event)
{
    TallTable::focusInEvent(event);
    // Who comes by keyboard sees where he is.
    if (event->reason() != Qt::MouseFocusReason && !currentIndex().isValid() &&
        model()->rowCount() > 0)
        setCurrentIndex(model()->index(0, 0));
}

} // namespace veltrix
