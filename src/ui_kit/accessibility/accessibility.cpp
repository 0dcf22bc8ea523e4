// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/accessibility/accessibility.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QVariant>

namespace veltrix
{

namespace
{

constexpr char roleProperty[] = "veltrixAccessibleRole";

class RoleInterface final : public QAccessibleWidget
{
public:
    explicit RoleInterface(QWidget *widget) : QAccessibleWidget(widget) {}

    [[nodiscard]] QAccessible::Role role() const override
    {
        // A row may become a button later than it is first asked what it is.
        return static_cast<QAccessible::Role>(widget()->property(roleProperty).toInt());
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        if (role() == QAccessible::Dialog)
            state.modal = true;
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (role() == QAccessible::Button && widget()->isEnabled())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString &actionName) override
    {
        if (role() != QAccessible::Button || actionName != pressAction()) {
            QAccessibleWidget::doAction(actionName);
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
};

QAccessibleInterface *roleInterface(const QString &className, QObject *object)
{
    // Only the most derived class asks, so that standard widgets keep their own interfaces.
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget || className != QLatin1String(widget->metaObject()->className()))
        return nullptr;
    if (!widget->property(roleProperty).isValid())
        return nullptr;
    return new RoleInterface(widget);
}

} // namespace

void installAccessibleRoles()
{
    static const bool installed = [] {
        QAccessible::installFactory(roleInterface);
        return true;
    }();
    Q_UNUSED(installed)
}

void setAccessibleRole(QWidget *widget, QAccessible::Role role)
{
    widget->setProperty(roleProperty, int(role));
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
