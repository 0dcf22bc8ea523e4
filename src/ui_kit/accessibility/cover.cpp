// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/accessibility/cover.h"

#include <QPointer>
#include <QVariant>

namespace veltrix
{

namespace
{

constexpr char coverProperty[] = "veltrixCover";
constexpr char settlesProperty[] = "veltrixCoverSettles";
/// Of a widget that may have an interface to be exchanged.
constexpr char exchangedProperty[] = "veltrixExchangedInterface";

class StandIn final : public CoverableInterface
{
public:
    explicit StandIn(QWidget *widget) : CoverableInterface(widget) {}

    // A list goes on telling of its rows, as when another becomes the current one. There is no row
    // to be had, and the toolkit warns where it gets none: what happens in it happens to it.
    [[nodiscard]] QAccessibleInterface *child(int) const override
    {
        return QAccessible::queryAccessibleInterface(widget());
    }
};

/// Ends the interfaces that are not, or no longer, what their widgets are to be seen as; new ones
/// are made when they are asked for.
void endOutdatedInterfaces(QWidget *window)
{
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        if (!widget->property(exchangedProperty).toBool())
            continue;
        QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(widget);
        if (!seen || (dynamic_cast<StandIn *>(seen) != nullptr) == isCovered(widget))
            continue;
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(seen));
        widget->setProperty(exchangedProperty, QVariant());
    }
    QAccessibleEvent event(window, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void setCover(QWidget *window, QWidget *cover)
{
    if (coverOf(window) == cover)
        return;
    window->setProperty(coverProperty,
                        cover ? QVariant::fromValue(QPointer<QWidget>(cover)) : QVariant());
    // Later, because it may be such an interface that has opened the sheet and is still at work.
    if (window->property(settlesProperty).toBool())
        return;
    window->setProperty(settlesProperty, true);
    QMetaObject::invokeMethod(
        window,
        [window] {
            window->setProperty(settlesProperty, QVariant());
            endOutdatedInterfaces(window);
        },
        Qt::QueuedConnection);
}

QWidget *coverOf(const QWidget *window)
{
    return window->property(coverProperty).value<QPointer<QWidget>>();
}

bool isCovered(const QWidget *widget)
{
    const QWidget *window = widget->window();
    const QWidget *cover = coverOf(window);
    return cover && widget != window && widget != cover && !cover->isAncestorOf(widget);
}

QAccessible::State CoverableInterface::state() const
{
    if (!isCovered(widget()))
        return ownState();
    QAccessible::State state;
    state.disabled = true;
    state.invisible = true;
    return state;
}

QString CoverableInterface::text(QAccessible::Text kind) const
{
    return isCovered(widget()) ? QString() : ownText(kind);
}

int CoverableInterface::childCount() const
{
    return isCovered(widget()) ? 0 : QAccessibleWidget::childCount();
}

QAccessibleInterface *CoverableInterface::child(int index) const
{
    return isCovered(widget()) ? nullptr : QAccessibleWidget::child(index);
}

int CoverableInterface::indexOfChild(const QAccessibleInterface *child) const
{
    return isCovered(widget()) ? -1 : QAccessibleWidget::indexOfChild(child);
}

QAccessibleInterface *CoverableInterface::childAt(int x, int y) const
{
    return isCovered(widget()) ? nullptr : QAccessibleWidget::childAt(x, y);
}

QStringList CoverableInterface::actionNames() const
{
    return isCovered(widget()) ? QStringList() : ownActionNames();
}

void CoverableInterface::doAction(const QString &name)
{
    if (!isCovered(widget()))
        doOwnAction(name);
}

void *CoverableInterface::interface_cast(QAccessible::InterfaceType type)
{
    return isCovered(widget()) ? nullptr : QAccessibleWidget::interface_cast(type);
}

QAccessible::State CoverableInterface::ownState() const
{
    return QAccessibleWidget::state();
}

QString CoverableInterface::ownText(QAccessible::Text kind) const
{
    return QAccessibleWidget::text(kind);
}

QStringList CoverableInterface::ownActionNames() const
{
    return QAccessibleWidget::actionNames();
}

void CoverableInterface::doOwnAction(const QString &name)
{
    QAccessibleWidget::doAction(name);
}

QAccessibleInterface *standInFor(QWidget *widget)
{
    widget->setProperty(exchangedProperty, true);
    return isCovered(widget) ? new StandIn(widget) : nullptr;
}

} // namespace veltrix
