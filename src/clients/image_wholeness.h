// SPDX-License-Identifier: GPL-3.0-or-later
// Tells an image that was cut short on the way from a whole one.
#pragma once

#include <QByteArrayView>

namespace veltrix
{

/// False when the bytes begin as a PNG, JPEG or WebP and stop before its end. Formats that are not
/// known count as whole: whether an image can be shown is for its reader to say.
bool isWholeImage(QByteArrayView bytes);

} // namespace veltrix
