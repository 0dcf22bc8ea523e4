// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/analysis/keyword_suggestions_sheet.h"

#include "ui/suggestions/suggestion_rows.h"
#include "ui/suggestions/typed_suggestions.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/loadable_view.h"
#include "ui_kit/widgets/text_label.h"

#include <QScrollArea>

#include <algorithm>
#include <utility>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{560, 460};

} // namespace

KeywordSuggestionsSheet::KeywordSuggestionsSheet(ASOStore &store,
                                                 std::shared_ptr<AutocompleteSuggesting> source,
                                                 const DashboardKeywordRow &keyword, QUuid appId,
                                                 QWidget *parent)
    : SheetFrame(QStringLiteral("suggestionsSheet"), tr("Suggestions"), Body::Fixed, preferredSize,
                 parent),
      m_keyword(keyword), m_tracking(store, appId),
      m_view(new LoadableView(QStringLiteral("suggestionsMessage"))),
      m_outcome(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                              QStringLiteral("suggestionsOutcome"))),
      m_rows(new SuggestionRows(SuggestionRows::Escape::Passes)), m_list(makeList())
{
    setSubtitle(inSentence(m_keyword.keyword) + QStringLiteral(" · ") +
                storefrontName(m_keyword.country));
    addCloseButton(QStringLiteral("suggestionsDone"), QString(), tr("Done"), tr("Done"))
        ->setFocus();
    m_view->addWidget(m_list);
    body()->setContentsMargins(0, 0, 0, 0);
    body()->addWidget(m_view, 1);
    connect(m_view, &LoadableView::retryRequested, &m_terms, [this] { m_terms.retry(); });
    connect(&m_terms, &LoaderSignals::changed, this, &KeywordSuggestionsSheet::showState);
    connect(&m_tracking, &KeywordTracking::trackedChanged, this,
            &KeywordSuggestionsSheet::showState);
    connect(&m_tracking, &KeywordTracking::outcomeChanged, this,
            &KeywordSuggestionsSheet::showOutcome);
    connect(m_rows, &SuggestionRows::chosen, this, [this](const QString &term) {
        m_tracking.track({{term, m_keyword.country}});
    });
    m_terms.ask([source = std::move(source), text = m_keyword.keyword,
                 country = m_keyword.country](std::stop_token stop) {
        return loadedSuggestions(source, text, country, std::move(stop));
    });
}

QWidget *KeywordSuggestionsSheet::makeList()
{
    auto *content = new QWidget;
    auto *layout =
        makeColumn(spacing::s, content, {spacing::xl, spacing::m, spacing::xl, spacing::l});
    layout->addWidget(
        makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary,
                      tr("What the App Store suggests to whoever types the keyword, best first. "
                         "Choose one to track it.")));
    layout->addWidget(m_rows);
    layout->addWidget(m_outcome);
    layout->addStretch(1);
    m_outcome->hide();
    QScrollArea *scroll =
        makeScrollPage(QStringLiteral("suggestionsScroll"), tr("Suggestions"), content);
    scroll->setFocusPolicy(Qt::NoFocus);
    return scroll;
}

void KeywordSuggestionsSheet::showState()
{
    const LoadingWords words{tr("Loading suggestions…"), suggestionsFailed(), tr("Try again")};
    if (const auto message = words.messageOf(m_terms.state())) {
        m_view->showMessage(*message);
        return;
    }
    const auto isTracked = [this](const QString &term) {
        return m_tracking.isTracked(term, m_keyword.country);
    };
    const QList<Suggestion> offered =
        offeredSuggestions(*m_terms.state().value(), m_keyword.keyword, isTracked, mostShown);
    if (offered.isEmpty()) {
        m_view->showMessage({QStringLiteral("magnifyingglass"), noSuggestions(m_keyword.keyword),
                             tr("The App Store suggests nothing that goes on from this keyword."),
                             QString()});
        return;
    }
    m_rows->setSuggestions(offered);
    m_view->showPage(m_list);
}

void KeywordSuggestionsSheet::showOutcome()
{
    m_outcome->setTone(m_tracking.outcome().isProblem ? TextLabel::Tone::Red
                                                      : TextLabel::Tone::Secondary);
    m_outcome->setText(m_tracking.outcome().message);
    m_outcome->setAccessibleName(m_outcome->text());
    m_outcome->show();
    announceNameChange(m_outcome);
}

} // namespace veltrix
