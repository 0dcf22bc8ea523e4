// SPDX-License-Identifier: GPL-3.0-or-later
// The line over the window's content that tells of an update.
#pragma once

#include <functional>

class QWidget;

namespace veltrix
{

class UpdaterInterface;

/// A banner that shows what the updater announces, quietly or, for a critical update, plainly. Its
/// button does the next step, or opens the settings, where notes and "Download" are. The updater
/// must outlive it.
QWidget *makeUpdateBanner(UpdaterInterface &updater, std::function<void()> openSettings);

} // namespace veltrix
