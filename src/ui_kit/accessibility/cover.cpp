// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/accessibility/cover.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QVariant>

namespace veltrix
{

namespace
{

constexpr char coverProperty[] = "veltrixCover";
constexpr char settlesProperty[] = "veltrixCoverSettles";

class CoveredInterface final : public QAccessibleWidget
{
public:
    explicit CoveredInterface(QWidget *widget) : QAccessibleWidget(widget) {}

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        state.disabled = true;
        state.invisible = true;
        return state;
    }
    [[nodiscard]] QString text(QAccessible::Text) const override { return {}; }
    [[nodiscard]] int childCount() const override { return 0; }
    // A list goes on telling of its rows, as when another becomes the current one. There is no row
    // to be had, and the toolkit warns where it gets none: what happens in it happens to it.
    [[nodiscard]] QAccessibleInterface *child(int) const override
    {
        return QAccessible::queryAccessibleInterface(widget());
    }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    [[nodiscard]] QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    // Neither pressed nor written to nor selected in.
    void *interface_cast(QAccessible::InterfaceType) override { return nullptr; }
};

/// Ends the interfaces that are not, or no longer, what their widgets are to be seen as; new ones
/// are made when they are asked for.
void endOutdatedInterfaces(QWidget *window)
{
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(widget);
        if (seen && (dynamic_cast<CoveredInterface *>(seen) != nullptr) != isCovered(widget))
            QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(seen));
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

QAccessibleInterface *makeCoveredInterface(QWidget *widget)
{
    return new CoveredInterface(widget);
}

} // namespace veltrix
