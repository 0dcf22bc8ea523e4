// SPDX-License-Identifier: GPL-3.0-or-later
// The one list of the keyword table's columns: it feeds the model, sorting, copying, export, the
// saved layout and what a screen reader says.
#pragma once

#include "model/dashboard_keyword_row.h"
#include "model/rank_movement.h"

#include <QCollatorSortKey>
#include <QString>

#include <array>
#include <memory>
#include <optional>

namespace veltrix
{

enum class KeywordColumn { Keyword, Target, Popularity, Difficulty, Position, Apps };

inline constexpr int keywordColumnCount = 6;

/// What the table knows of one keyword.
struct KeywordEntry {
    DashboardKeywordRow row;
    /// The latest movement, without the first observation, which is none.
    std::optional<RankMovement> movement;
    /// Why the keyword can never be measured, as a clause; empty for one that can.
    QString unmeasurable;
    /// What the newest measurement says about popularity; may be empty.
    QString popularityStatus;
    /// A refresh of this one keyword is running.
    bool isRefreshing = false;
    /// The keyword as searches compare it.
    QString folded;
    /// The keyword's place in the order of the user's language.
    std::shared_ptr<const QCollatorSortKey> order;
};

/// A place in the order of a column. Keys of a higher group ("no value") come after all others in
/// both directions; within a group the number decides.
struct ColumnSortKey {
    int group = 0;
    double number = 0;
    auto operator<=>(const ColumnSortKey &) const = default;
};

struct KeywordColumnInfo {
    KeywordColumn column;
    /// Stable name for the saved layout.
    const char *id;
    /// Untranslated header.
    const char *title;
    /// Untranslated explanation of the header; may be empty.
    const char *help;
    int defaultWidth;
    int minimumWidth;
    ColumnSortKey (*sortKey)(const KeywordEntry &entry);
    /// The cell as plain text, for copies and exports.
    QString (*text)(const KeywordEntry &entry);
    /// The cell as a screen reader says it.
    QString (*accessibleText)(const KeywordEntry &entry);
    /// More for a screen reader; also the tool tip. May be empty.
    QString (*accessibleHint)(const KeywordEntry &entry);

    [[nodiscard]] QString headerText() const;
    [[nodiscard]] QString helpText() const;
};

/// All columns in their defined order; the index is the model's column.
const std::array<KeywordColumnInfo, keywordColumnCount> &keywordColumns();
const KeywordColumnInfo &keywordColumnInfo(KeywordColumn column);
/// The column of an id, or nothing.
std::optional<KeywordColumn> keywordColumnOf(const QString &id);

/// The whole row as one sentence for a screen reader. `updated` says when it was measured.
QString keywordRowSentence(const KeywordEntry &entry, const QString &updated);

} // namespace veltrix
