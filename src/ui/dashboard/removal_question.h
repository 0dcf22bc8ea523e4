// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked before keywords are removed.
#pragma once

#include "ui_kit/widgets/confirm_sheet.h"

#include <QStringList>

namespace veltrix
{

/// Names a single keyword and counts several.
ConfirmSheet::Question removalQuestion(const QStringList &keywords);

} // namespace veltrix
