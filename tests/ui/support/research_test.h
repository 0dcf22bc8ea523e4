// SPDX-License-Identifier: GPL-3.0-or-later
// A test with a window on the world of rivals.
#pragma once

#include "ui/support/research_world.h"
#include "ui/support/ui_test.h"

#include <QLabel>

namespace veltrix
{

class ResearchTest : public UiTest
{
protected:
    ResearchTest() { open(); }

    /// Opens the window on a fresh world of rivals.
    void open();
    /// The same on what was saved.
    void reopen();

    ResearchWorld &rivals() { return static_cast<ResearchWorld &>(*world); }
    FakeAppStore &appStore() { return *rivals().appStore; }
    QUuid appId() { return rivals().appId(); }

    /// The texts of all visible labels in `root`, top to bottom as they were made.
    static QStringList textsIn(QWidget *root);
    /// Whether one of them is exactly this.
    static bool shows(QWidget *root, const QString &text) { return textsIn(root).contains(text); }
    /// The content of the topmost sheet, or null.
    QWidget *topSheet();
    QString emptyTitle(const char *name) { return find<EmptyState>(name)->content().title; }
    QString emptyText(const char *name) { return find<EmptyState>(name)->content().text; }
    /// Tabs until the widget of that name has the focus; fails after a round.
    void tabTo(const char *name);
};

} // namespace veltrix
