// SPDX-License-Identifier: GPL-3.0-or-later
// The one list of the columns of the apps above the user's own.
#pragma once

#include "ui/competitors/above_you.h"
#include "ui_kit/table/column.h"

#include <memory>

namespace veltrix
{

enum class AboveColumn {
    Rank,
    App,
    WeekAgo,
    Change,
    /// Since when it has been above.
    Since,
    /// Whether it is a tracked competitor.
    Tracked,
};

/// What the table knows of one app.
struct AboveEntry {
    AppAbove app;
    Date now;
    /// The name's place in the order of the user's language.
    std::shared_ptr<const QCollatorSortKey> collation;
};

/// All columns in their order; the index is the model's column.
std::span<const Column<AboveEntry, AboveColumn>> aboveColumns();

} // namespace veltrix
