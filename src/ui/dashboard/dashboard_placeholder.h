// SPDX-License-Identifier: GPL-3.0-or-later
// What stands in place of the keyword table.
#pragma once

#include "ui/dashboard/quick_filter.h"
#include "ui/dashboard/tag_filter.h"
#include "ui_kit/widgets/empty_state.h"

#include <optional>

namespace veltrix
{

/// What the Keywords workspace has to show.
struct DashboardState {
    /// Whether it is known what was saved.
    bool isStateRead = true;
    bool hasApp = false;
    /// Keywords of the app, and those of them that the filter leaves.
    int tracked = 0;
    int shown = 0;
    QuickFilter quickFilter = QuickFilter::All;
    /// Keywords that pass search, storefront filter and tags, whatever the quick filter.
    int found = 0;
    TagFilter tags = {};
    /// Whether there is a search or a storefront filter.
    bool isNarrowed = false;
};

/// Words for an empty table, and where its button leads.
struct DashboardPlaceholder {
    enum class WayOn { None, AddApp, AddKeywords, ShowAllKeywords };

    EmptyState::Content content;
    WayOn wayOn = WayOn::None;
};

/// Nothing when there are keywords to show.
std::optional<DashboardPlaceholder> dashboardPlaceholder(const DashboardState &state);

} // namespace veltrix
