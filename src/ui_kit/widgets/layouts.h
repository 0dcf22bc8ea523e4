// SPDX-License-Identifier: GPL-3.0-or-later
// The layouts of screens: no margins but those that are asked for.
#pragma once

#include "ui_kit/theme/typography.h"

#include <QBoxLayout>

class QKeyEvent;
class QScrollArea;
class QStackedWidget;

namespace veltrix
{

/// A row with that many pixels between its parts; of `parent`, if there is one.
QHBoxLayout *makeRow(int spacing, QWidget *parent = nullptr, const QMargins &margins = {});
/// A column with that many pixels between its parts; of `parent`, if there is one.
QVBoxLayout *makeColumn(int spacing, QWidget *parent = nullptr, const QMargins &margins = {});

// What nobody sees yet is laid out when it is seen. The toolkit lays a widget out whenever it is to
// be shown, also in a window that is being built, and measures every text in it for nothing.
/// Shows or hides a part.
void setShown(QWidget &part, bool isShown);
/// Makes a page of the stack the current one.
void turnTo(QStackedWidget &stack, QWidget *page);

/// Shows `content` without a frame, scrolled up and down only; what lies below shows through. Named
/// for tests and for people. It is no stop of Tab, because nothing would show that it has the
/// focus: its controls leave it the keys that scroll, and a sheet those that nobody wants.
QScrollArea *makeScrollPage(const QString &objectName, const QString &accessibleName,
                            QWidget *content);

/// Makes of a scroll area such a page.
void dressScrollPage(QScrollArea &area, const QString &objectName, const QString &accessibleName,
                     QWidget *content);

/// Scrolls up and down by arrows, PageUp, PageDown, Home and End. False for other keys, and when
/// there is nothing to scroll.
bool scrollByKey(QScrollArea &area, const QKeyEvent &event);

/// Lets the vertical scroll bar of `area` take its room from the margin of the content, so that the
/// content keeps its width and stays in the middle whether the bar is there or not.
void takeScrollBarFromMargin(QScrollArea &area, QLayout &content);

} // namespace veltrix
