// SPDX-License-Identifier: GPL-3.0-or-later
// Icons and screenshots of the made-up apps, drawn when they are asked for.
#pragma once

#include "sample/sample_app.h"

#include <QByteArray>

namespace veltrix::sample
{

inline constexpr int largestIcon = 1'024;
inline constexpr int largestScreenshotNumber = 10;

/// A square with the app's gradient and its theme's white drawing, as PNG; `size` in pixels, from
/// 1 to largestIcon.
QByteArray iconPng(const SampleApp &app, int size);

enum class Screen { Phone, Tablet };

/// A made-up screen of the app as PNG; `number` counts from 1 to largestScreenshotNumber.
QByteArray screenshotPng(const SampleApp &app, Screen screen, int number);

} // namespace veltrix::sample
