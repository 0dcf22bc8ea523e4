// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/accessibility/accessibility.h"

#include "ui_kit/accessibility/cover.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextEdit>
#include <QVariant>

namespace veltrix
{

namespace
{

constexpr char roleProperty[] = "veltrixAccessibleRole";
constexpr char expandedProperty[] = "veltrixExpanded";

class RoleInterface final : public CoverableInterface
{
public:
    explicit RoleInterface(QWidget *widget) : CoverableInterface(widget) {}

    [[nodiscard]] QAccessible::Role role() const override
    {
        // A row may become a button later than it is first asked what it is.
        return static_cast<QAccessible::Role>(widget()->property(roleProperty).toInt());
    }

    // Of a window with a sheet over it there is the sheet.
    [[nodiscard]] int childCount() const override
    {
        return coverOf(widget()) ? 1 : CoverableInterface::childCount();
    }
    [[nodiscard]] QAccessibleInterface *child(int index) const override
    {
        QWidget *cover = coverOf(widget());
        if (!cover)
            return CoverableInterface::child(index);
        return index == 0 ? QAccessible::queryAccessibleInterface(cover) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const QWidget *cover = coverOf(widget());
        if (!cover)
            return CoverableInterface::indexOfChild(child);
        return child && child->object() == cover ? 0 : -1;
    }
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override
    {
        QWidget *cover = coverOf(widget());
        return cover ? QAccessible::queryAccessibleInterface(cover)
                     : CoverableInterface::childAt(x, y);
    }

protected:
    [[nodiscard]] QAccessible::State ownState() const override
    {
        QAccessible::State state = CoverableInterface::ownState();
        if (role() == QAccessible::Dialog)
            state.modal = true;
        if (const auto *box = qobject_cast<const QAbstractButton *>(widget());
            box && role() == QAccessible::CheckBox) {
            state.checkable = true;
            state.checked = box->isChecked();
        }
        const QVariant expanded = widget()->property(expandedProperty);
        if (expanded.isValid()) {
            state.expandable = true;
            state.expanded = expanded.toBool();
            state.collapsed = !expanded.toBool();
        }
        return state;
    }

    [[nodiscard]] QStringList ownActionNames() const override
    {
        QStringList names = CoverableInterface::ownActionNames();
        if (!ownAction().isEmpty() && widget()->isEnabled())
            names.prepend(ownAction());
        return names;
    }

    void doOwnAction(const QString &actionName) override
    {
        if (ownAction().isEmpty() || actionName != ownAction()) {
            CoverableInterface::doOwnAction(actionName);
            return;
        }
        // A row or card that stands for a button takes the space bar as one.
        const QPointer<QWidget> button = widget();
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
            if (button && button->isEnabled())
                QCoreApplication::sendEvent(button, &event);
        }
    }

private:
    /// What the space bar does.
    [[nodiscard]] QString ownAction() const
    {
        switch (role()) {
        case QAccessible::Button:
            return pressAction();
        case QAccessible::CheckBox:
            return toggleAction();
        default:
            return {};
        }
    }
};

/// A button, as the toolkit tells of one.
class ButtonInterface final : public CoverableInterface
{
public:
    explicit ButtonInterface(QAbstractButton *button) : CoverableInterface(button) {}

    [[nodiscard]] QAccessible::Role role() const override
    {
        if (menu())
            return QAccessible::ButtonMenu;
        if (!button().isCheckable())
            return QAccessible::Button;
        return button().autoExclusive() ? QAccessible::RadioButton : QAccessible::CheckBox;
    }

    [[nodiscard]] QStringList keyBindingsForAction(const QString &name) const override
    {
        const QKeySequence key = button().shortcut();
        if (name != ownAction() || key.isEmpty() || isCovered(widget()))
            return {};
        return {key.toString(QKeySequence::NativeText)};
    }

protected:
    [[nodiscard]] QAccessible::State ownState() const override
    {
        QAccessible::State state = CoverableInterface::ownState();
        state.checkable = button().isCheckable();
        state.checked = button().isChecked();
        state.pressed = button().isDown();
        state.hasPopup = menu() != nullptr;
        if (const auto *box = qobject_cast<const QCheckBox *>(widget()))
            state.checkStateMixed = box->checkState() == Qt::PartiallyChecked;
        if (const auto *push = qobject_cast<const QPushButton *>(widget()))
            state.defaultButton = push->isDefault();
        return state;
    }

    [[nodiscard]] QString ownText(QAccessible::Text kind) const override
    {
        QString text = CoverableInterface::ownText(kind);
        if (kind == QAccessible::Name && text.isEmpty())
            text = withoutMnemonic(button().text());
        return text;
    }

    [[nodiscard]] QStringList ownActionNames() const override
    {
        QStringList names = CoverableInterface::ownActionNames();
        if (button().isEnabled())
            names.prepend(ownAction());
        return names;
    }

    void doOwnAction(const QString &name) override
    {
        if (name != ownAction())
            CoverableInterface::doOwnAction(name);
        else if (!button().isEnabled())
            return;
        else if (menu())
            static_cast<QPushButton *>(widget())->showMenu();
        else if (button().isCheckable())
            button().toggle();
        else
            button().animateClick();
    }

private:
    [[nodiscard]] QAbstractButton &button() const
    {
        return *static_cast<QAbstractButton *>(widget());
    }
    [[nodiscard]] QMenu *menu() const
    {
        const auto *push = qobject_cast<const QPushButton *>(widget());
        return push ? push->menu() : nullptr;
    }
    /// What the space bar does.
    [[nodiscard]] QString ownAction() const
    {
        if (menu())
            return showMenuAction();
        return button().isCheckable() ? toggleAction() : pressAction();
    }
    [[nodiscard]] static QString withoutMnemonic(QString text)
    {
        return text.replace(QRegularExpression(QStringLiteral("&(.)")), QStringLiteral("\\1"));
    }
};

/// The parts of a scroll area: what it shows, and the scroll bars that are in view. A screen reader
/// counts them first and asks for each later, when a scroll bar may have gone; the toolkit's own
/// interface reads past the end of its list then.
class ScrollAreaInterface final : public CoverableInterface
{
public:
    explicit ScrollAreaInterface(QAbstractScrollArea *area) : CoverableInterface(area) {}

    [[nodiscard]] int childCount() const override { return int(parts().size()); }
    [[nodiscard]] QAccessibleInterface *child(int index) const override
    {
        return QAccessible::queryAccessibleInterface(parts().value(index));
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        return child ? int(parts().indexOf(qobject_cast<QWidget *>(child->object()))) : -1;
    }

private:
    [[nodiscard]] QList<QWidget *> parts() const
    {
        if (isCovered(widget()))
            return {};
        const auto *area = static_cast<const QAbstractScrollArea *>(widget());
        QList<QWidget *> parts =
            area->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        parts.removeIf([area](const QWidget *part) {
            return part->isWindow() || (part != area->viewport() && !part->isVisible());
        });
        return parts;
    }
};

QAccessibleInterface *scrollAreaInterface(const QString &className, QObject *object)
{
    // Item views and texts come with interfaces of classes further down.
    if (className != QLatin1String("QScrollArea") &&
        className != QLatin1String("QAbstractScrollArea"))
        return nullptr;
    auto *area = qobject_cast<QAbstractScrollArea *>(object);
    return area ? new ScrollAreaInterface(area) : nullptr;
}

/// Whether the toolkit's own interface lets something be written, chosen or moved.
bool canBeWrittenTo(const QWidget *widget)
{
    return qobject_cast<const QLineEdit *>(widget) ||
           qobject_cast<const QPlainTextEdit *>(widget) ||
           qobject_cast<const QAbstractItemView *>(widget) ||
           qobject_cast<const QAbstractSlider *>(widget) ||
           qobject_cast<const QAbstractSpinBox *>(widget) ||
           qobject_cast<const QComboBox *>(widget) || qobject_cast<const QTextEdit *>(widget);
}

QAccessibleInterface *roleInterface(const QString &className, QObject *object)
{
    // Only the most derived class asks, so that standard widgets keep their own interfaces.
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget || className != QLatin1String(widget->metaObject()->className()))
        return nullptr;
    if (widget->property(roleProperty).isValid())
        return new RoleInterface(widget);
    if (auto *button = qobject_cast<QAbstractButton *>(widget))
        return new ButtonInterface(button);
    if (canBeWrittenTo(widget))
        return standInFor(widget);
    // Words and frames cannot be used, covered or not.
    return nullptr;
}

} // namespace

void installAccessibleRoles()
{
    static const bool installed = [] {
        QAccessible::installFactory(scrollAreaInterface);
        QAccessible::installFactory(roleInterface);
        return true;
    }();
    Q_UNUSED(installed)
}

void setAccessibleRole(QWidget *widget, QAccessible::Role role)
{
    widget->setProperty(roleProperty, int(role));
}

void setExpandedState(QWidget *button, bool isExpanded)
{
    if (!button->property(roleProperty).isValid()) {
        setAccessibleRole(button, QAccessible::Button);
        // Naming it has made the toolkit's own interface, which knows nothing of this.
        QAccessibleInterface *own = QAccessible::queryAccessibleInterface(button);
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(own));
    }
    if (button->property(expandedProperty) == QVariant(isExpanded))
        return;
    button->setProperty(expandedProperty, isExpanded);
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    QAccessibleStateChangeEvent event(button, changed);
    QAccessible::updateAccessibility(&event);
}

void nameControl(QWidget *widget, const QString &objectName, const QString &accessibleName)
{
    widget->setObjectName(objectName);
    widget->setAccessibleName(accessibleName);
}

void announceNameChange(QWidget *widget)
{
    QAccessibleEvent event(widget, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
}

} // namespace veltrix
