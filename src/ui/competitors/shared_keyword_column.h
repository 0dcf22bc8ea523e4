// SPDX-License-Identifier: GPL-3.0-or-later
// The one list of the columns of shared keywords.
#pragma once

#include "model/url.h"
#include "ui/competitors/shared_keywords.h"
#include "ui_kit/table/column.h"

#include <memory>

namespace veltrix
{

enum class SharedColumn {
    Keyword,
    OwnRank,
    TheirRank,
    /// Who is ahead, and by how much.
    Leads,
};

/// The icons of both apps.
struct RivalIcons {
    std::optional<Url> own;
    std::optional<Url> theirs;

    bool operator==(const RivalIcons &) const = default;
};

/// What the table knows of one keyword.
struct SharedEntry {
    SharedKeyword shared;
    RivalIcons icons;
    /// The keyword's place in the order of the user's language.
    std::shared_ptr<const QCollatorSortKey> collation;
};

/// All columns in their order; the index is the model's column.
std::span<const Column<SharedEntry, SharedColumn>> sharedColumns();

} // namespace veltrix
