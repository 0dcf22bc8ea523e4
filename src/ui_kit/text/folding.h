// SPDX-License-Identifier: GPL-3.0-or-later
// Text as searches compare it.
#pragma once

#include <QString>

namespace veltrix
{

/// Without case and without diacritics: "Café" and "CAFE" fold to the same text. A text contains
/// what the user typed when the folded text contains the folded typing.
QString foldedForSearch(const QString &text);

} // namespace veltrix
