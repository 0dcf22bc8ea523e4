// SPDX-License-Identifier: GPL-3.0-or-later
// Tool tips that stay narrow.
#pragma once

#include <QString>

namespace veltrix
{

/// The text in lines of at most 80 characters, broken at spaces where there are any: a tool tip
/// shows plain text as wide as its longest line. After 1,000 characters it ends with "…".
QString toolTipText(const QString &text);

} // namespace veltrix
