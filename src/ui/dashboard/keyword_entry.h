// SPDX-License-Identifier: GPL-3.0-or-later
// What the keyword table knows of one keyword, and the texts that say when it was measured.
#pragma once

#include "effects/clock.h"
#include "model/dashboard_keyword_row.h"
#include "model/rank_movement.h"
#include "ui/dashboard/quick_filter.h"
#include "ui/dashboard/rank_change.h"
#include "ui_kit/text/relative_time.h"
#include "ui_kit/widgets/tag_chip.h"

#include <QCollatorSortKey>
#include <QString>

#include <memory>
#include <optional>

namespace veltrix
{

/// What the texts of all rows need.
struct KeywordSurroundings {
    Clock &clock;
    RelativeTime relativeTime;
    /// Equal keywords of several storefronts may stand below each other: each tells its own.
    bool hasSeveralStorefronts = false;
};

struct KeywordEntry {
    DashboardKeywordRow row;
    /// The latest movement, without the first observation, which is none.
    std::optional<RankMovement> movement;
    RankChanges changes;
    /// Why the keyword can never be measured, as a clause; empty for one that can.
    QString unmeasurable;
    /// What the newest measurement says about popularity; may be empty.
    QString popularityStatus;
    /// In the order of the alphabet; made ready once, so that painting asks nothing of them.
    QStringList tags;
    QStringList foldedTags;
    QList<TagChip> tagChips;
    /// Their place in the order of the user's language; null without a tag.
    std::shared_ptr<const QCollatorSortKey> tagOrder;
    /// The quick filters that show the keyword.
    QuickFilterMatches matches;
    /// A refresh of this one keyword is running.
    bool isRefreshing = false;
    /// The keyword as searches compare it.
    QString folded;
    /// The keyword's place in the order of the user's language.
    std::shared_ptr<const QCollatorSortKey> order;
    /// Of the table that the entry is in.
    const KeywordSurroundings *surroundings = nullptr;
};

/// "Updated 4 min. ago", "Awaiting metrics", "Refreshing…", or "Cannot be measured: " and why.
QString timeText(const KeywordEntry &entry);
/// The line under the keyword: timeText(), or only the reason of one that cannot be measured.
QString updatedText(const KeywordEntry &entry);

} // namespace veltrix
