// SPDX-License-Identifier: GPL-3.0-or-later
// What the autocomplete client remembers, and its file.
#pragma once

#include "model/date.h"
#include "model/field_list.h"

#include <QStringList>

#include <map>
#include <optional>

namespace veltrix
{

/// One answer of the search-hints service.
struct AutocompleteHints {
    /// Suggestions, best first.
    QStringList terms;
    Date fetchedAt;

    bool operator==(const AutocompleteHints &) const = default;
};

template <>
inline constexpr auto fieldsOf<AutocompleteHints> = std::tuple{
    field("terms", &AutocompleteHints::terms),
    field("fetchedAt", &AutocompleteHints::fetchedAt),
};

/// The visibility of a keyword on one day.
struct AutocompleteDailyScore {
    /// UTC days since 1970-01-01.
    std::int64_t day = 0;
    /// 0 to 100.
    std::int64_t score = 0;
    Date observedAt;

    bool operator==(const AutocompleteDailyScore &) const = default;
};

template <>
inline constexpr auto fieldsOf<AutocompleteDailyScore> = std::tuple{
    field("day", &AutocompleteDailyScore::day),
    field("score", &AutocompleteDailyScore::score),
    field("observedAt", &AutocompleteDailyScore::observedAt),
};

/// Everything that outlives the program.
struct AutocompleteState {
    /// By storefront code, a colon, and the prefix.
    std::map<QString, AutocompleteHints> cache;
    /// By storefront code, a colon, and the keyword: one score a day, oldest first.
    std::map<QString, QList<AutocompleteDailyScore>> history;
    /// The day that `requests` counts: UTC days since 1970-01-01.
    std::int64_t budgetDay = 0;
    std::int64_t requests = 0;
    /// The service refused: no request before this moment.
    std::optional<Date> blockedUntil;

    bool operator==(const AutocompleteState &) const = default;
};

template <>
inline constexpr auto fieldsOf<AutocompleteState> = std::tuple{
    field("cache", &AutocompleteState::cache),
    field("history", &AutocompleteState::history),
    field("budgetDay", &AutocompleteState::budgetDay),
    field("requests", &AutocompleteState::requests),
    field("blockedUntil", &AutocompleteState::blockedUntil),
};

/// The state's file. Nothing here throws; what goes wrong is a line on the error output. It belongs
/// to one thread at a time.
class AutocompleteStateFile
{
public:
    /// An empty path means no file.
    explicit AutocompleteStateFile(QString path) : m_path(std::move(path)) {}

    /// The file's content; a file that is missing or cannot be read is an empty state.
    AutocompleteState load();

    /// Writes the file, and flushes it to the disk. A damaged one is first kept under a dated name;
    /// one that could not be reached, so that nobody knows what it holds, is not replaced. A
    /// failure keeps the old file.
    void save(const AutocompleteState &state, Date now);

private:
    enum class Content { Known, Damaged, Unknown };

    QString m_path;
    Content m_content = Content::Known;
};

} // namespace veltrix
