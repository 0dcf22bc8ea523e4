// SPDX-License-Identifier: GPL-3.0-or-later
// A test with a window: the real widgets on a store with fake services.
#pragma once

#include "ui/dashboard/dashboard_page.h"
#include "ui/dashboard/keyword_table_model.h"
#include "ui/dashboard/keyword_table_view.h"
#include "ui/support/ui_world.h"
#include "ui_kit/theme/theme_controller.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/status_bar.h"
#include "ui_kit/widgets/text_field.h"
#include "ui_kit/widgets/text_label.h"

#include <QAbstractItemModelTester>
#include <QLocale>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace veltrix
{

/// The program's style, font and palette, once for all tests of a run.
FakeColorScheme &testTheme();

class UiTest : public testing::Test
{
protected:
    UiTest();
    ~UiTest() override;

    /// Opens a window on the sample state, or on the given one.
    void open();
    void open(const PersistedState &state);
    /// Closes the window and opens another on what was saved.
    void reopen();

    ASOStore &store() { return *world->store; }
    DashboardPage &page() { return window->dashboard(); }
    KeywordTableView &table() { return page().table(); }
    KeywordTableModel &model() { return page().model(); }

    /// A widget of the window by object name, one that is shown if there is one; fails the test
    /// when it is missing.
    template <class T = QWidget>
    T *find(const char *name)
    {
        T *found = nullptr;
        for (T *widget : window->findChildren<T *>(QString::fromLatin1(name))) {
            if (!found || widget->isVisible())
                found = widget;
        }
        EXPECT_TRUE(found) << "no widget named " << name;
        return found;
    }
    [[nodiscard]] bool isShown(const char *name)
    {
        const auto widgets = window->findChildren<QWidget *>(QString::fromLatin1(name));
        return std::any_of(widgets.begin(), widgets.end(),
                           [](const QWidget *widget) { return widget->isVisible(); });
    }
    void click(const char *name);
    void type(const char *field, const QString &text);
    /// Presses a key where the focus is.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Waits until the last change is saved, and runs what was posted, deletions included.
    void settle();

    /// The keywords shown, top to bottom.
    QStringList shownKeywords();
    QString cell(const char *keyword, KeywordColumn column, int role = Qt::DisplayRole);
    [[nodiscard]] QString status() { return find<StatusBar>("statusBar")->message(); }
    [[nodiscard]] QString work();
    void selectKeywords(const QStringList &keywords);
    /// Triggers an entry of an open menu.
    void choose(const char *menuName, const QString &entry);

    std::unique_ptr<UiWorld> world;
    std::unique_ptr<MainWindow> window;

private:
    std::unique_ptr<QObject> m_watch;
};

} // namespace veltrix
