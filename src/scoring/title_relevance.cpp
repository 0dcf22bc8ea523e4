// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/title_relevance.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace veltrix
{

namespace
{

using WordList = std::span<const std::u16string_view>;

// Both lists hold the plural beside the singular of every word whose plural the tokens map, so
// looking a token up finds what its unmapped form would find.
constexpr std::u16string_view tradingWords[] = {
    u"option", u"options", u"trading", u"trade",   u"stock",  u"stocks",
    u"call",   u"put",     u"signal",  u"signals", u"invest", u"investing",
};
constexpr std::u16string_view everydayTradingWords[] = {u"call", u"put"};
constexpr std::u16string_view financeWords[] = {
    u"finance",   u"financial",  u"stock",       u"stocks",    u"trading", u"trade",
    u"portfolio", u"broker",     u"invest",      u"investing", u"market",  u"markets",
    u"futures",   u"derivative", u"derivatives", u"forex",     u"etf",
};

/// Relevance of a title with every token: this much however far they are scattered, and up to the
/// rest of 1 the closer they stand. Unitless.
constexpr double scatteredRelevance = 0.85;
constexpr double adjacencyBonus = 0.15;
/// Relevance per share of tokens found, and the most of it. Unitless.
constexpr double partialGain = 0.5;
constexpr double partialLimit = 0.5;
/// Distinct trading words that show the intent whatever the other words are.
constexpr qsizetype plainTradingWords = 2;

bool contains(WordList list, QStringView token)
{
    return std::any_of(list.begin(), list.end(),
                       [token](std::u16string_view word) { return QStringView(word) == token; });
}

bool isTradingOrFinance(QStringView token)
{
    return contains(tradingWords, token) || contains(financeWords, token);
}

bool findTradingIntent(const TextTokens &tokens)
{
    QVarLengthArray<QStringView, 12> trading;
    bool onlyEveryday = true;
    for (const QStringView token : tokens) {
        if (!contains(tradingWords, token) || trading.contains(token))
            continue;
        trading.append(token);
        onlyEveryday = onlyEveryday && contains(everydayTradingWords, token);
    }
    if (onlyEveryday)
        return false;
    return trading.size() >= plainTradingWords ||
           std::all_of(tokens.begin(), tokens.end(), isTradingOrFinance);
}

bool hasFinanceEvidence(const TextTokens &tokens)
{
    return std::any_of(tokens.begin(), tokens.end(),
                       [](QStringView token) { return contains(financeWords, token); });
}

} // namespace

KeywordRelevance::KeywordRelevance(QStringView keyword)
    : m_tokens(keyword, TokenRule::Relevance), m_tradingIntent(findTradingIntent(m_tokens))
{
    for (const QStringView token : m_tokens) {
        if (!m_phrase.isEmpty())
            m_phrase.append(u' ');
        m_phrase.append(token.data(), token.size());
    }
}

TitleRelevance KeywordRelevance::against(QStringView title, QStringView genre) const
{
    const TextTokens words(title, TokenRule::Relevance);
    if (m_tokens.isEmpty() || words.isEmpty())
        return {};
    if (m_tradingIntent && !hasFinanceEvidence(words) &&
        !hasFinanceEvidence(TextTokens(genre, TokenRule::Relevance)))
        return {};
    if (words.lowerCased().contains(QStringView(m_phrase.constData(), m_phrase.size())))
        return {.relevance = 1, .exactPhrase = true, .allTokens = false};

    qsizetype found = 0;
    for (const QStringView token : m_tokens)
        found += words.contains(token) ? 1 : 0;
    const auto count = static_cast<double>(m_tokens.size());
    if (found < m_tokens.size()) {
        const double share = static_cast<double>(found) / count;
        return {.relevance = std::min(share * partialGain, partialLimit)};
    }

    const auto isMatch = [this](QStringView word) {
        return m_tokens.contains(word);
    };
    const auto first = std::find_if(words.begin(), words.end(), isMatch);
    auto last = words.end();
    while (!isMatch(*--last)) {
    }
    const auto width = static_cast<double>(last - first + 1);
    return {.relevance = scatteredRelevance + adjacencyBonus * std::min(count / width, 1.0),
            .exactPhrase = false,
            .allTokens = true};
}

} // namespace veltrix
