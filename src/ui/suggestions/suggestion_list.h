// SPDX-License-Identifier: GPL-3.0-or-later
// Search suggestions as they are offered for tracking.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace veltrix
{

/// A search term that can be tracked, or is.
struct Suggestion {
    QString term;
    bool isTracked = false;

    bool operator==(const Suggestion &) const = default;
};

/// Whether the App Store is asked what it suggests for a text: from two characters on, or one of a
/// script in which a character is a word, and no more than a keyword may have.
[[nodiscard]] bool isWorthSuggesting(const QString &typed);

/// What of `terms`, best first, is offered to whoever has typed that, `most` at most: each once,
/// ignoring case, without what is typed already and without what could not be tracked or would be
/// taken for several keywords.
[[nodiscard]] QList<Suggestion>
offeredSuggestions(const QStringList &terms, const QString &typed,
                   const std::function<bool(const QString &term)> &isTracked, qsizetype most);

/// "Suggestions for “photo ca”"
[[nodiscard]] QString suggestionsHeading(const QString &typed);
/// "No suggestions for “photo ca”"
[[nodiscard]] QString noSuggestions(const QString &typed);
/// "Suggestions couldn't be loaded."
[[nodiscard]] QString suggestionsFailed();
/// What a screen reader reads: "photo calendar, suggestion 1 of 4", and "tracked" behind it.
[[nodiscard]] QString spokenSuggestion(const Suggestion &suggestion, qsizetype number,
                                       qsizetype count);

} // namespace veltrix
