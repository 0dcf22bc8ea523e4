// SPDX-License-Identifier: GPL-3.0-or-later
// The countries that have an App Store, whether or not the made-up one is sold there.
#pragma once

#include <QStringView>

namespace veltrix::sample
{

/// Whether there is an App Store for a code of two upper-case letters.
bool hasAppStore(QStringView country);

} // namespace veltrix::sample
