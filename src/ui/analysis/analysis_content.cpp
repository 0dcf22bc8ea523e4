// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/analysis/analysis_content.h"

#include "ui/analysis/analysis_cards.h"
#include "ui_kit/text/date_texts.h"
#include "ui_kit/text/storefronts.h"

namespace veltrix
{

namespace
{

using Texts = AnalysisTexts;

Figure positionFigure(const KeywordSnapshot &snapshot)
{
    const QString caption = Texts::tr("Position:");
    if (!snapshot.position)
        return {caption, Texts::tr("Not found in returned results")};
    return {caption, QString::number(*snapshot.position), QString(), true};
}

/// What is missing, and why, stands in the card.
Figure scoreFigure(const AnalysisCard &card)
{
    if (!card.score)
        return {card.title, QStringLiteral("—")};
    return {card.title, QString::number(*card.score), QStringLiteral("/ 100"), true};
}

void appendItem(QStringList &lines, const AnalysisItem &item)
{
    if (const auto *text = std::get_if<AnalysisText>(&item)) {
        lines << text->text;
    } else if (const auto *factor = std::get_if<AnalysisFactor>(&item)) {
        QStringList head{factor->name};
        for (const QString &part : {factor->weight, factor->points}) {
            if (!part.isEmpty())
                head << part;
        }
        lines << head.join(QStringLiteral(" · ")) << QStringLiteral("  ") + factor->detail;
    } else {
        const auto &evidence = std::get<AnalysisEvidence>(item);
        lines << evidence.name + QStringLiteral(": ") + evidence.value;
    }
}

} // namespace

QString AnalysisCard::scoreText() const
{
    return score ? Texts::tr("%1 / 100").arg(*score) : missing;
}

AnalysisContent analysisContent(const QString &keyword, const QString &country,
                                const KeywordSnapshot *snapshot, const AnalysisFormat &format)
{
    AnalysisContent content;
    content.keyword = keyword;
    content.country = country;
    content.isSaved = snapshot != nullptr;
    if (!snapshot) {
        content.emptyTitle = Texts::tr("No saved analysis");
        content.emptyText =
            Texts::tr("A successful keyword refresh is needed before a breakdown can be shown.");
        return content;
    }
    content.observation = Texts::tr("Saved observation: %1")
                              .arg(dateTimeText(snapshot->fetchedAt, format.locale, format.zone));
    content.guidanceTitle = Texts::tr("Target guidance");
    content.guidance = targetBadge(snapshot->opportunity);
    if (!snapshot->opportunity)
        content.guidance.text = Texts::tr("Refresh required / insufficient data");
    content.guidanceText =
        snapshot->opportunity
            ? snapshot->opportunity->explanation
            : Texts::tr("Refresh this keyword to calculate the new opportunity model. Popularity, "
                        "search results and a supported storefront are required.");
    content.positionNote =
        Texts::tr("Position reflects the search API response (up to 100 apps), not verified device "
                  "search rankings. This sheet reads saved data and makes no new requests.");
    content.cards = {popularityCard(*snapshot, format.locale), autocompleteCard(*snapshot),
                     difficultyCard(*snapshot, format.locale),
                     competitionCard(*snapshot, format.locale)};
    if (snapshot->opportunity)
        content.targetNote = Texts::tr("The target comes from popularity and competition; its "
                                       "guidance calls the competition score difficulty.");
    content.figures = {positionFigure(*snapshot), scoreFigure(content.cards[0]),
                       scoreFigure(content.cards[2]), scoreFigure(content.cards[3])};
    content.figures[3].help = Texts::tr("How strong the first 25 apps are. The target is "
                                        "calculated from this score, not from the difficulty.");
    return content;
}

QString plainText(const AnalysisContent &content, const AnalysisFormat &format)
{
    QStringList lines;
    lines << Texts::tr("Keyword analysis")
          << content.keyword + QStringLiteral(" · ") +
                 storefrontName(content.country, format.locale);
    if (!content.isSaved) {
        lines << QString() << content.emptyTitle << content.emptyText;
        return lines.join(u'\n') + u'\n';
    }
    lines << content.observation << QString()
          << content.guidanceTitle + QStringLiteral(": ") + content.guidance.text
          << content.guidanceText << QString() << content.figures.constFirst().text()
          << content.positionNote;
    if (!content.targetNote.isEmpty())
        lines << content.targetNote;
    for (const AnalysisCard &card : content.cards) {
        lines << QString() << card.title;
        if (!card.scoreText().isEmpty())
            lines << card.scoreText();
        for (const AnalysisItem &item : card.items)
            appendItem(lines, item);
    }
    return lines.join(u'\n') + u'\n';
}

} // namespace veltrix
