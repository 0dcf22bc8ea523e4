// SPDX-License-Identifier: GPL-3.0-or-later
// What is suggested for the text that is being typed.
#pragma once

#include "ui/suggestions/typed_suggestions.h"

#include <QWidget>

#include <functional>

namespace veltrix
{

class SuggestionRows;
class TextLabel;

/// A quiet line that says for what suggestions are shown, that there are none, or that they could
/// not be loaded, and the suggestions below it. Hidden while nothing is asked.
class SuggestionPanel final : public QWidget
{
    Q_OBJECT

public:
    /// Suggestions that are shown at most.
    static constexpr qsizetype mostShown = 6;

    /// `suggestions` outlives this; `isTracked` tells which of them are tracked.
    SuggestionPanel(TypedSuggestions &suggestions,
                    std::function<bool(const QString &term)> isTracked, QWidget *parent = nullptr);

    /// Shows the same suggestions: others of them may be tracked now.
    void showState();
    /// Puts the focus on the first suggestion that can be chosen; false when there is none.
    bool enter();

Q_SIGNALS:
    void chosen(const QString &term);
    /// The focus is to go back to where the text is typed.
    void left();

private:
    TypedSuggestions &m_suggestions;
    std::function<bool(const QString &term)> m_isTracked;
    TextLabel *m_line;
    SuggestionRows *m_rows;
};

} // namespace veltrix
