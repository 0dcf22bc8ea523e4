// SPDX-License-Identifier: GPL-3.0-or-later
// What lies behind a sheet is out of the reach of assistive technology, as it is out of the reach
// of mouse and keyboard.
#pragma once

#include <QAccessibleWidget>
#include <QWidget>

namespace veltrix
{

/// Lays `cover`, a child of `window`, over everything else in it; null takes the cover away. What
/// is covered cannot be pressed, written to or selected in, and has no children that can. It shows
/// at once in a CoverableInterface; exchanged interfaces follow as soon as control returns to the
/// event loop, and references that assistive technology holds to them end.
void setCover(QWidget *window, QWidget *cover);

/// What lies over the contents of that window, or null.
[[nodiscard]] QWidget *coverOf(const QWidget *window);
/// True for what is in a window with a cover, but not in the cover.
[[nodiscard]] bool isCovered(const QWidget *widget);

/// A widget that is lifeless while it is covered: no name, no children, no actions, disabled. It
/// stays the same interface before, behind and after a cover, because the toolkit keeps a
/// connection for every interface that it has ever had of a widget.
class CoverableInterface : public QAccessibleWidget
{
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QAccessible::State state() const final;
    [[nodiscard]] QString text(QAccessible::Text kind) const final;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override;
    [[nodiscard]] QStringList actionNames() const final;
    void doAction(const QString &name) final;
    void *interface_cast(QAccessible::InterfaceType type) final;

protected:
    // The same while nothing covers it.
    [[nodiscard]] virtual QAccessible::State ownState() const;
    [[nodiscard]] virtual QString ownText(QAccessible::Text kind) const;
    [[nodiscard]] virtual QStringList ownActionNames() const;
    virtual void doOwnAction(const QString &name);
};

/// For widgets with an interface that knows nothing of covers, as the toolkit's fields and tables
/// have: what stands in for it while the widget is covered, and null while it is not. To be asked
/// whenever such an interface is about to be made, which setCover() ends when it is outdated.
[[nodiscard]] QAccessibleInterface *standInFor(QWidget *widget);

} // namespace veltrix
