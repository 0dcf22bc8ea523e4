// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/focus_steps.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScrollArea>

#include <algorithm>

namespace veltrix
{

namespace
{

bool takesTab(const QWidget *widget)
{
    return (widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled() && widget->isVisible();
}

/// What gets the focus in an entry: the counterpart of the control that has it in another one, the
/// entry itself, or its first control. Null when nothing can.
QWidget *stopIn(QWidget *entry, const QString &counterpart)
{
    QList<QWidget *> stops;
    if (takesTab(entry))
        stops.append(entry);
    for (QWidget *control : entry->findChildren<QWidget *>()) {
        if (!takesTab(control))
            continue;
        if (!counterpart.isEmpty() && control->objectName() == counterpart)
            return control;
        stops.append(control);
    }
    return stops.value(0);
}

QScrollArea *scrollAreaAround(QWidget *widget)
{
    for (QWidget *around = widget->parentWidget(); around; around = around->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(around))
            return area;
    }
    return nullptr;
}

int rowsOfPage(const QWidget &entry, const QScrollArea *area)
{
    if (!area || entry.height() <= 0)
        return 1;
    // One stays in view, so that the eye keeps its place.
    return std::max(1, area->viewport()->height() / entry.height() - 1);
}

} // namespace

std::optional<int> stepIn(int count, int from, Qt::Key key, int abreast, int pageRows,
                          Qt::LayoutDirection direction)
{
    const int forward = direction == Qt::RightToLeft ? -1 : 1;
    int to = from;
    switch (key) {
    case Qt::Key_Up:
        to -= abreast;
        break;
    case Qt::Key_Down:
        to += abreast;
        break;
    case Qt::Key_Left:
        to -= abreast > 1 ? forward : 0;
        break;
    case Qt::Key_Right:
        to += abreast > 1 ? forward : 0;
        break;
    case Qt::Key_PageUp:
        to = std::max(from % abreast, from - pageRows * abreast);
        break;
    case Qt::Key_PageDown:
        to = std::min(from + pageRows * abreast, from + (count - 1 - from) / abreast * abreast);
        break;
    case Qt::Key_Home:
        to = 0;
        break;
    case Qt::Key_End:
        to = count - 1;
        break;
    default:
        return std::nullopt;
    }
    if (to == from || to < 0 || to >= count)
        return std::nullopt;
    return to;
}

void putInTabOrder(const QWidget &place, const QList<QWidget *> &widgets)
{
    // The toolkit orders only what can have the focus.
    const auto canFollow = [](const QWidget *widget) {
        return widget->focusPolicy() != Qt::NoFocus;
    };
    QWidget *last = place.previousInFocusChain();
    while (last != &place && (!canFollow(last) || place.isAncestorOf(last)))
        last = last->previousInFocusChain();
    if (last == &place)
        return;
    for (QWidget *widget : widgets) {
        for (QWidget *stop : QList<QWidget *>{widget} + widget->findChildren<QWidget *>()) {
            if (!canFollow(stop))
                continue;
            QWidget::setTabOrder(last, stop);
            last = stop;
        }
    }
}

bool moveFocusAmong(const QList<QWidget *> &entries, const QKeyEvent &event, int abreast)
{
    const QWidget *focused = QApplication::focusWidget();
    const auto holder = std::find_if(entries.begin(), entries.end(), [&](const QWidget *entry) {
        return focused && (entry == focused || entry->isAncestorOf(focused));
    });
    if (holder == entries.end() ||
        event.modifiers().testAnyFlags(~Qt::KeyboardModifiers(Qt::KeypadModifier)))
        return false;
    const QString counterpart = *holder == focused ? QString() : focused->objectName();
    QScrollArea *area = scrollAreaAround(*holder);
    const auto key = static_cast<Qt::Key>(event.key());
    auto to = stepIn(int(entries.size()), int(holder - entries.begin()), key, abreast,
                     rowsOfPage(**holder, area), (*holder)->layoutDirection());
    // Entries that cannot have the focus are passed over.
    QWidget *stop = to ? stopIn(entries[*to], counterpart) : nullptr;
    const bool isBack = key == Qt::Key_Up || key == Qt::Key_PageUp || key == Qt::Key_End;
    while (to && !stop) {
        to = stepIn(int(entries.size()), *to, isBack ? Qt::Key_Up : Qt::Key_Down, 1, 1);
        stop = to ? stopIn(entries[*to], counterpart) : nullptr;
    }
    if (!stop)
        return false;
    stop->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    stop->setFocus(Qt::TabFocusReason);
    if (area)
        area->ensureWidgetVisible(entries[*to], 0, 0);
    return true;
}

} // namespace veltrix
