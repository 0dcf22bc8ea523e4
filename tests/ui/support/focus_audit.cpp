// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/focus_audit.h"

#include "ui_kit/widgets/overlay.h"

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QPixmap>
#include <QTest>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int mostStops = 400;

QString named(const QWidget *widget)
{
    return QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName();
}

/// The ancestor of `widget`, or itself, that is a child of `parent`.
const QWidget *childHolding(const QWidget *parent, const QWidget *widget)
{
    while (widget->parentWidget() != parent)
        widget = widget->parentWidget();
    return widget;
}

const QWidget *commonParent(const QWidget *first, const QWidget *second)
{
    const QWidget *parent = first;
    while (parent != second && !parent->isAncestorOf(second))
        parent = parent->parentWidget();
    return parent;
}

/// True when `second` stands before `first` for who reads left to right and downwards.
bool standsBefore(const QWidget *second, const QWidget *first)
{
    const QWidget *parent = commonParent(first, second);
    if (parent == first)
        return false;
    if (parent == second)
        return true;
    const QRect one = childHolding(parent, first)->geometry();
    const QRect two = childHolding(parent, second)->geometry();
    constexpr int slack = 2;
    if (two.bottom() <= one.top() + slack)
        return true;
    const bool isBeside = two.top() < one.bottom() - slack && one.top() < two.bottom() - slack;
    return isBeside && two.right() <= one.left() + slack;
}

void focusByKey(QWidget *widget)
{
    widget->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    widget->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
}

void collectReachable(QAccessibleInterface *seen, const QWidget *cover, QStringList &found)
{
    auto *widget = qobject_cast<QWidget *>(seen->object());
    if (widget && widget != widget->window() && widget != cover && !cover->isAncestorOf(widget))
        found << named(widget) + QStringLiteral(" is in the tree");
    for (int i = 0; i < seen->childCount(); ++i) {
        if (QAccessibleInterface *child = seen->child(i))
            collectReachable(child, cover, found);
    }
}

} // namespace

QList<QWidget *> tabStops(QWidget *window)
{
    QList<QWidget *> stops;
    while (stops.size() < mostStops) {
        QWidget *before = QApplication::focusWidget();
        QTest::keyClick(before ? before : window, Qt::Key_Tab);
        QWidget *focused = QApplication::focusWidget();
        if (!focused || stops.contains(focused))
            break;
        stops.append(focused);
    }
    // Once around from the one that is seen first.
    for (qsizetype i = 0; i < stops.size(); ++i) {
        const bool isFirst = std::none_of(stops.begin(), stops.end(), [&](const QWidget *other) {
            return other != stops[i] && standsBefore(other, stops[i]);
        });
        if (isFirst)
            return stops.mid(i) + stops.mid(0, i);
    }
    return stops;
}

QStringList stopsOutOfOrder(const QList<QWidget *> &stops)
{
    QStringList wrong;
    for (qsizetype i = 1; i < stops.size(); ++i) {
        if (standsBefore(stops[i], stops[i - 1]))
            wrong << QStringLiteral("%1 comes after %2 but stands before it")
                         .arg(named(stops[i]), named(stops[i - 1]));
    }
    return wrong;
}

QStringList stopsWithoutVisibleFocus(QWidget *window)
{
    QStringList wrong;
    const QList<QWidget *> stops = tabStops(window);
    if (stops.size() < 2)
        return wrong;
    for (qsizetype i = 0; i < stops.size(); ++i) {
        focusByKey(stops[i]);
        const QImage with = stops[i]->grab().toImage();
        focusByKey(stops[(i + 1) % stops.size()]);
        if (stops[i]->grab().toImage() == with)
            wrong << named(stops[i]) + QStringLiteral(" looks the same without the focus");
    }
    return wrong;
}

QStringList reachableBehindSheet(QWidget *window)
{
    QStringList found;
    const Overlay *cover = Overlay::topOf(window);
    if (!cover)
        return found;
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        if (widget == cover || cover->isAncestorOf(widget) || widget->window() != window)
            continue;
        QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(widget);
        if (!seen)
            continue;
        if (seen->actionInterface() && !seen->actionInterface()->actionNames().isEmpty())
            found << named(widget) + QStringLiteral(" can be pressed");
        if (seen->editableTextInterface() || seen->valueInterface() || seen->tableInterface())
            found << named(widget) + QStringLiteral(" can be written to or selected in");
        if (seen->state().focusable)
            found << named(widget) + QStringLiteral(" reads as usable");
    }
    collectReachable(QAccessible::queryAccessibleInterface(window), cover, found);
    return found;
}

} // namespace veltrix
