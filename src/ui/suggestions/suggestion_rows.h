// SPDX-License-Identifier: GPL-3.0-or-later
// Suggestions below each other, each to be chosen.
#pragma once

#include "ui/suggestions/suggestion_list.h"
#include "ui_kit/widgets/pressable.h"

class QVBoxLayout;

namespace veltrix
{

/// One suggestion: a plus behind it, or that it is tracked, in which case it cannot be pressed.
class SuggestionRow final : public Pressable
{
    Q_OBJECT

public:
    explicit SuggestionRow(QWidget *parent = nullptr);

    void setSuggestion(const Suggestion &suggestion, qsizetype number, qsizetype count);
    [[nodiscard]] const QString &term() const { return m_suggestion.term; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Suggestion m_suggestion;
    /// As it was painted last.
    bool m_isElided = false;
};

/// The rows keep their places when others are shown. Arrows move among those that can be chosen,
/// Enter chooses; Up from the first, and Escape, lead out of them.
class SuggestionRows final : public QWidget
{
    Q_OBJECT

public:
    /// What Escape does: leads out, or is left to what is around.
    enum class Escape { LeadsOut, Passes };

    explicit SuggestionRows(Escape escape, QWidget *parent = nullptr);

    void setSuggestions(const QList<Suggestion> &suggestions);
    /// Puts the focus on the first that can be chosen; false when there is none.
    bool enter();

Q_SIGNALS:
    void chosen(const QString &term);
    void left();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    Escape m_escape;
    QList<SuggestionRow *> m_rows;
    QVBoxLayout *m_layout;
};

} // namespace veltrix
