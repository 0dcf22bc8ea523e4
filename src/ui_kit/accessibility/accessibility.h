// SPDX-License-Identifier: GPL-3.0-or-later
// What a screen reader is told about widgets that paint themselves.
#pragma once

#include <QAccessible>
#include <QWidget>

namespace veltrix
{

/// Makes accessible roles given with setAccessibleRole() effective. Called once by the theme.
void installAccessibleRoles();

/// Says what `widget` is: a dialog, a picture, an indicator.
void setAccessibleRole(QWidget *widget, QAccessible::Role role);

/// Names a control for tests (objectName) and for people (accessibleName) in one line.
void nameControl(QWidget *widget, const QString &objectName, const QString &accessibleName);

/// Says of a button that it unfolds something, and whether it has; screen readers hear each change.
void setExpandedState(QWidget *button, bool isExpanded);

/// Tells screen readers that the widget's name has changed, as for a status line.
void announceNameChange(QWidget *widget);

} // namespace veltrix
