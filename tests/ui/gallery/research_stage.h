// SPDX-License-Identifier: GPL-3.0-or-later
// A scene with a window on the world of rivals.
#pragma once

#include "ui/gallery/scenes.h"
#include "ui/support/research_world.h"

#include <QAbstractButton>

namespace veltrix
{

struct ResearchStage {
    std::shared_ptr<ResearchWorld> world;
    std::unique_ptr<MainWindow> window;

    template <class T>
    T *find(const char *name = nullptr) const
    {
        return window->findChild<T *>(name ? QString::fromLatin1(name) : QString());
    }
    void click(const char *name) const { find<QAbstractButton>(name)->click(); }
};

/// A scene that is prepared in its world (may be null) and then acted in the window.
Scene researchScene(const char *name, std::function<void(ResearchWorld &)> prepare,
                    std::function<void(ResearchStage &)> act);

/// All saved checks of a keyword that is tracked for so many days, in the history sheet.
void openLongHistory(ResearchStage &made, size_t days);

} // namespace veltrix
