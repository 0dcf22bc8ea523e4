// SPDX-License-Identifier: GPL-3.0-or-later
// The one list of the columns of the movers.
#pragma once

#include "model/url.h"
#include "store/rank_days.h"
#include "ui/overview/app_standing.h"
#include "ui_kit/table/column.h"

#include <QUuid>

#include <memory>

namespace veltrix
{

enum class MoverColumn {
    Keyword,
    App,
    /// The rank at the beginning of the period.
    Before,
    Now,
    Change,
    /// The last thirty days.
    Line,
};

/// A keyword that has moved in the period.
struct Mover {
    QUuid id;
    QString keyword;
    QString country;
    QString appName;
    std::optional<Url> icon;
    RankDays ranks;
    RankMovement movement = RankMovement::unchanged();
    std::optional<std::int64_t> before;
    std::optional<std::int64_t> now;
    Period period = Period::Yesterday;
    /// Keyword and app, as foldedForSearch() makes them.
    QString folded;
    /// Their places in the order of the user's language.
    std::shared_ptr<const QCollatorSortKey> order;
    std::shared_ptr<const QCollatorSortKey> appOrder;
};

/// All columns in their order; the index is the model's column.
std::span<const Column<Mover, MoverColumn>> moverColumns();
/// The title of MoverColumn::Before: "Yesterday", "7 days ago".
QString beforeTitle(Period period);

} // namespace veltrix
