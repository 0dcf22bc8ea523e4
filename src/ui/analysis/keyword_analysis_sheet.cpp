// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/analysis/keyword_analysis_sheet.h"

#include "ui/analysis/analysis_rows.h"
#include "ui/analysis/keyword_suggestions_sheet.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/card.h"
#include "ui_kit/widgets/card_grid.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/feedback_button.h"
#include "ui_kit/widgets/layouts.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QScrollArea>
#include <QScrollBar>

#include <utility>

namespace veltrix
{

namespace
{

constexpr QSize preferredSize{740, 900};
constexpr QSize emptySize{740, 400};
constexpr int leastFigureWidth = 150;
constexpr double leastTextContrast = 4.5;

/// A tint's own colour for text on it where that can be read, in light and dark.
Token titleToken(Token token)
{
    for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
        const Tokens tokens(scheme);
        const QColor background = composed(Card::fill(token, tokens), tokens[Token::Raised]);
        if (contrastRatio(tokens[token], background) < leastTextContrast)
            return Token::Text;
    }
    return token;
}

QString nameOf(AnalysisCard::Model model)
{
    switch (model) {
    case AnalysisCard::Model::Popularity:
        return QStringLiteral("popularityCard");
    case AnalysisCard::Model::Autocomplete:
        return QStringLiteral("autocompleteCard");
    case AnalysisCard::Model::Difficulty:
        return QStringLiteral("difficultyCard");
    case AnalysisCard::Model::Competition:
        return QStringLiteral("competitionCard");
    }
    Q_UNREACHABLE();
}

} // namespace

KeywordAnalysisContent::KeywordAnalysisContent(const AnalysisContent &content, QWidget *parent)
    : QWidget(parent), m_layout(makeColumn(spacing::l, this))
{
    setObjectName(QStringLiteral("analysisContent"));
    if (!content.isSaved) {
        buildEmpty(content);
        return;
    }
    m_layout->addWidget(
        makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, content.observation));
    buildGuidance(content);
    buildFigures(content);
    m_layout->addWidget(
        makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, content.positionNote));
    if (!content.targetNote.isEmpty())
        m_layout->addWidget(
            makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, content.targetNote));
    for (const AnalysisCard &card : content.cards)
        buildCard(card);
    m_layout->addStretch(1);
}

void KeywordAnalysisContent::buildEmpty(const AnalysisContent &content)
{
    auto *empty = new EmptyState(QStringLiteral("analysisEmpty"));
    empty->setContent(
        {QStringLiteral("doc.text"), content.emptyTitle, content.emptyText, QString()});
    m_layout->addWidget(empty, 1);
}

void KeywordAnalysisContent::buildGuidance(const AnalysisContent &content)
{
    const Token token = content.guidance.token;
    auto *card = new Card(QStringLiteral("guidanceCard"));
    card->setAccessibleName(content.guidanceTitle + QStringLiteral(": ") + content.guidance.text);
    card->setTint(token);
    auto *badge = new BadgeView;
    badge->setBadge(content.guidance);
    auto *head = makeRow(spacing::s);
    head->addWidget(new SymbolView(QStringLiteral("lightbulb"), token));
    head->addWidget(
        new TokenLabel(TextStyle::BodySemibold, titleToken(token), content.guidanceTitle), 1);
    head->addWidget(badge);
    card->content()->addLayout(head);
    card->content()->addWidget(
        makeParagraph(TextStyle::Body, TextLabel::Tone::Text, content.guidanceText));
    m_layout->addWidget(card);
}

void KeywordAnalysisContent::buildFigures(const AnalysisContent &content)
{
    QList<QWidget *> tiles;
    int number = 0;
    for (const Figure &figure : content.figures) {
        auto *tile = new FigureTile(QStringLiteral("figureTile%1").arg(++number));
        tile->setFigure(figure);
        tiles << tile;
    }
    auto *grid = new CardGrid(leastFigureWidth, CardGrid::Width::OfTheCards);
    grid->setCards(tiles);
    m_layout->addWidget(grid);
}

void KeywordAnalysisContent::buildCard(const AnalysisCard &content)
{
    auto *card = new Card(nameOf(content.model));
    card->setAccessibleName(content.title);
    auto *head = makeRow(spacing::m);
    head->addWidget(makeHeading(content.title), 1);
    head->addWidget(makeHeading(content.scoreText()));
    card->content()->addLayout(head);
    const Token meter =
        content.model == AnalysisCard::Model::Competition ? Token::Blue : Token::Accent;
    for (const AnalysisItem &item : content.items) {
        if (const auto *text = std::get_if<AnalysisText>(&item))
            card->content()->addWidget(makeTextRow(*text));
        else if (const auto *factor = std::get_if<AnalysisFactor>(&item))
            card->content()->addWidget(makeFactorRow(*factor, meter));
        else
            card->content()->addWidget(makeEvidenceRow(std::get<AnalysisEvidence>(item)));
    }
    m_layout->addWidget(card);
}

KeywordAnalysisSheet::KeywordAnalysisSheet(ASOStore &store, const DashboardKeywordRow &keyword,
                                           std::shared_ptr<AutocompleteSuggesting> suggestions,
                                           QWidget *parent)
    : SheetFrame(QStringLiteral("analysisSheet"), tr("Keyword analysis"), Body::Scrolled,
                 preferredSize, parent),
      m_store(store), m_keyword(keyword), m_suggestions(std::move(suggestions)),
      m_copy(new FeedbackButton(QStringLiteral("analysisCopy"), Button::Kind::Standard,
                                QStringLiteral("doc.on.doc"), tr("Copy as text"), tr("Copied")))
{
    setSubtitle(inSentence(m_keyword.keyword) + QStringLiteral(" · ") +
                storefrontName(m_keyword.country));
    addSuggestionsButton();
    addAction(m_copy);
    addCloseButton(QStringLiteral("analysisDone"), QString(), tr("Done"), tr("Done"))->setFocus();
    connect(m_copy, &Button::clicked, this, &KeywordAnalysisSheet::copyText);
    connect(&m_store, &ASOStore::keywordChanged, this, [this](QUuid id) {
        if (id == m_keyword.id)
            showNewestSnapshot();
    });
    showNewestSnapshot();
}

void KeywordAnalysisSheet::addSuggestionsButton()
{
    const auto tracked = m_store.trackedKeyword(m_keyword.id);
    if (!m_suggestions || !tracked)
        return;
    auto *button =
        new Button(Button::Kind::Standard, QStringLiteral("lightbulb"), tr("Suggestions"));
    nameControl(button, QStringLiteral("analysisSuggestions"),
                tr("Suggestions for %1").arg(inSentence(m_keyword.keyword)));
    connect(button, &Button::clicked, this, [this, appId = tracked->appId] {
        openSheet(this, new KeywordSuggestionsSheet(m_store, m_suggestions, m_keyword, appId));
    });
    addAction(button);
}

void KeywordAnalysisSheet::showNewestSnapshot()
{
    const SharedSnapshot snapshot = m_store.newestSnapshot(m_keyword.id);
    m_shown = analysisContent(m_keyword.keyword, m_keyword.country, snapshot.get());
    const int place = scrollArea()->verticalScrollBar()->value();
    setPreferredSize(m_shown.isSaved ? preferredSize : emptySize);
    delete m_content;
    m_content = new KeywordAnalysisContent(m_shown);
    body()->addWidget(m_content, 1);
    // Shown and laid out at once: the place in the new content is there to go back to.
    m_content->show();
    QEvent layout(QEvent::LayoutRequest);
    QCoreApplication::sendEvent(scrollArea()->widget(), &layout);
    scrollArea()->verticalScrollBar()->setValue(place);
}

void KeywordAnalysisSheet::copyText()
{
    QGuiApplication::clipboard()->setText(plainText(m_shown));
    m_copy->confirm();
}

} // namespace veltrix
