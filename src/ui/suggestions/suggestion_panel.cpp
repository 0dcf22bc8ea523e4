// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/suggestion_panel.h"

#include "ui/suggestions/suggestion_rows.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/text_label.h"

#include <utility>

namespace veltrix
{

SuggestionPanel::SuggestionPanel(TypedSuggestions &suggestions,
                                 std::function<bool(const QString &)> isTracked, QWidget *parent)
    : QWidget(parent), m_suggestions(suggestions), m_isTracked(std::move(isTracked)),
      m_line(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                           QStringLiteral("suggestionsLine"))),
      m_rows(new SuggestionRows(SuggestionRows::Escape::LeadsOut))
{
    setObjectName(QStringLiteral("suggestionPanel"));
    auto *layout = makeColumn(spacing::xs, this);
    layout->addWidget(m_line);
    layout->addWidget(m_rows);
    layout->addStretch(1);
    connect(m_rows, &SuggestionRows::chosen, this, &SuggestionPanel::chosen);
    connect(m_rows, &SuggestionRows::left, this, &SuggestionPanel::left);
    connect(&m_suggestions, &TypedSuggestions::changed, this, &SuggestionPanel::showState);
    showState();
}

void SuggestionPanel::showState()
{
    const Loadable<QStringList> &state = m_suggestions.state();
    const QString &typed = m_suggestions.typed();
    if (state.is<NotAsked>()) {
        setMinimumHeight(0);
        hide();
        return;
    }
    if (state.isUnderWay()) {
        // What is around stays where it is until the answer.
        setMinimumHeight(isVisible() ? height() : 0);
        m_rows->setSuggestions({});
        m_line->setText(suggestionsHeading(typed) + u'…');
        show();
        return;
    }
    setMinimumHeight(0);
    QList<Suggestion> offered;
    if (const QStringList *terms = state.value())
        offered = offeredSuggestions(*terms, typed, m_isTracked, mostShown);
    m_rows->setSuggestions(offered);
    if (state.is<LoadFailed>())
        m_line->setText(suggestionsFailed());
    else
        m_line->setText(offered.isEmpty() ? noSuggestions(typed) : suggestionsHeading(typed));
    m_line->setAccessibleName(offered.isEmpty()
                                  ? m_line->text()
                                  : tr("%1 suggestions for “%2”")
                                        .arg(QString::number(offered.size()), inSentence(typed)));
    show();
    announceNameChange(m_line);
}

bool SuggestionPanel::enter()
{
    return m_rows->enter();
}

} // namespace veltrix
