// SPDX-License-Identifier: GPL-3.0-or-later
// Every screen in every state, for pictures and for the audit.
#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace veltrix
{

/// Something on screen, with whatever it lives on.
struct Stage {
    /// Keeps the surroundings alive; destroyed after the widget.
    std::shared_ptr<void> world;
    std::unique_ptr<QWidget> widget;
};

struct Scene {
    QString name;
    std::function<Stage()> build;
};

/// All scenes of the program.
std::vector<Scene> galleryScenes();

/// Builds the scene, lets it settle, and takes its picture.
QPixmap renderScene(const Scene &scene);
/// Builds the scene and lets it settle.
Stage settledStage(const Scene &scene);

} // namespace veltrix
