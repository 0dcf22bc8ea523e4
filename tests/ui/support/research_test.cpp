// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/support/research_test.h"

#include <QApplication>

namespace veltrix
{

void ResearchTest::open()
{
    world = std::make_unique<ResearchWorld>();
    window = std::make_unique<MainWindow>(world->collaborators());
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

void ResearchTest::reopen()
{
    window->close();
    window.reset();
    settle();
    rivals().restartStore();
    window = std::make_unique<MainWindow>(world->collaborators());
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
}

QStringList ResearchTest::textsIn(QWidget *root)
{
    QStringList texts;
    const auto labels = root->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->isVisibleTo(root) && !label->text().isEmpty())
            texts << label->text();
    }
    return texts;
}

QWidget *ResearchTest::topSheet()
{
    QWidget *top = nullptr;
    const auto overlays = window->findChildren<Overlay *>(QString(), Qt::FindDirectChildrenOnly);
    for (const Overlay *overlay : overlays) {
        if (overlay->isVisible())
            top = overlay->content();
    }
    return top;
}

void ResearchTest::tabTo(const char *name)
{
    const QWidget *wanted = find(name);
    for (int step = 0; step < 200; ++step) {
        if (QApplication::focusWidget() == wanted)
            return;
        press(Qt::Key_Tab);
    }
    ADD_FAILURE() << name << " is not reached with the Tab key";
}

} // namespace veltrix
