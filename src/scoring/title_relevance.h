// SPDX-License-Identifier: GPL-3.0-or-later
// Does an app's title speak to a keyword? The test on which popularity, competition and opportunity
// stand.
#pragma once

#include "scoring/text_tokens.h"

namespace veltrix
{

/// What a title says of a keyword.
struct TitleRelevance {
    /// 0 to 1: 1 for the phrase itself, 0.85 to 1 when every token is there, at most 0.5 when some
    /// are, 0 for none.
    double relevance = 0;
    /// The title holds the keyword's tokens as one phrase.
    bool exactPhrase = false;
    /// Not the phrase, but every token of the keyword is a token of the title.
    bool allTokens = false;

    /// The title targets the keyword, in either way.
    [[nodiscard]] bool targetsKeyword() const { return exactPhrase || allTokens; }

    bool operator==(const TitleRelevance &) const = default;
};

/// The test for one keyword, which is cut into tokens once for any number of titles.
class KeywordRelevance
{
public:
    explicit KeywordRelevance(QStringView keyword);

    /// Tests a title. Relevance tokens are compared whole; the phrase is looked for in the
    /// lower-cased title as it stands, so it may begin or end inside a word.
    ///
    /// A keyword of trading intent ("stock options") is credited only to titles with finance
    /// evidence in the title or the genre: its words mean something else everywhere else.
    ///
    /// A missing title is an empty one and speaks to nothing; a missing genre is no evidence.
    [[nodiscard]] TitleRelevance against(QStringView title, QStringView genre) const;

    [[nodiscard]] const TextTokens &tokens() const { return m_tokens; }
    /// "call" and "put" are everyday words and never make trading intent by themselves; a word such
    /// as "stock" does only among other words of trading or finance.
    [[nodiscard]] bool hasTradingIntent() const { return m_tradingIntent; }

private:
    TextTokens m_tokens;
    /// The tokens joined by single spaces.
    QVarLengthArray<QChar, 128> m_phrase;
    bool m_tradingIntent;
};

} // namespace veltrix
