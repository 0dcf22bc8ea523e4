// SPDX-License-Identifier: GPL-3.0-or-later
// A test with a window on the world of one rival over time.
#pragma once

#include "ui/support/research_test.h"
#include "ui/support/rival_world.h"

namespace veltrix
{

class RivalTest : public ResearchTest
{
protected:
    RivalTest() { openOn(std::make_unique<RivalWorld>()); }

    void openOn(std::unique_ptr<RivalWorld> made)
    {
        window.reset();
        world = std::move(made);
        openWindow();
    }
    /// The window again, on a world that was played meanwhile.
    void openWindow()
    {
        window.reset();
        window = std::make_unique<MainWindow>(world->collaborators());
        window->resize(1280, 800);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    RivalWorld &rival() { return static_cast<RivalWorld &>(*world); }
    /// Waits for what is asked of the saving thread.
    template <class Condition>
    void settleUntil(Condition condition)
    {
        EXPECT_TRUE(QTest::qWaitFor(condition)) << "it did not come";
        settle();
    }
};

} // namespace veltrix
