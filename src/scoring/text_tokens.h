// SPDX-License-Identifier: GPL-3.0-or-later
// How the models cut texts into words. Nothing here follows the user's locale.
#pragma once

#include <QList>
#include <QStringView>
#include <QVarLengthArray>

#include <limits>
#include <optional>

namespace veltrix
{

/// A letter: Unicode categories L*.
bool isLetter(char32_t character);

/// A letter, a digit or a mark: Unicode categories L*, M*, N*. Marks count because Thai and
/// Devanagari words would fall to pieces without them.
bool isWordCharacter(char32_t character);

/// The Unicode property White_Space, line ends included.
bool isWhiteSpace(char32_t character);

/// The code point that starts at `position`, which moves past it. Half a surrogate pair stands for
/// itself.
inline char32_t takeCodePoint(QStringView text, qsizetype &position)
{
    const char16_t first = text[position++].unicode();
    if (QChar::isHighSurrogate(first) && position < text.size() && text[position].isLowSurrogate())
        return QChar::surrogateToUcs4(first, text[position++].unicode());
    return first;
}

/// Characters of a text, a surrogate pair counted once.
qsizetype codePointCount(QStringView text);

/// The text of an optional field; an absent one counts as empty.
inline QStringView viewOf(const std::optional<QString> &text)
{
    return text ? QStringView(*text) : QStringView();
}

/// A text in lower case by Unicode's own mapping. Short texts take no memory from the heap.
class LowerCasedText
{
public:
    explicit LowerCasedText(QStringView text);
    LowerCasedText(const LowerCasedText &) = delete;
    LowerCasedText &operator=(const LowerCasedText &) = delete;

    [[nodiscard]] QStringView view() const { return {m_text.constData(), m_text.size()}; }

private:
    void append(char32_t character);

    QVarLengthArray<char16_t, 128> m_text;
};

/// How a text is cut into tokens.
enum class TokenRule {
    /// Relevance tokens: lower-cased, split at everything that is not a word character, and the
    /// plurals "options", "stocks", "signals" and "markets" mapped to their singular.
    Relevance,
    /// Tokens of the difficulty model: lower-cased, split at white space and hyphens; punctuation
    /// stays attached.
    Difficulty,
};

/// The tokens of one text, in order, duplicates kept, none of them empty. They are views into this
/// object.
class TextTokens
{
public:
    TextTokens(QStringView text, TokenRule rule);
    TextTokens(const TextTokens &) = delete;
    TextTokens &operator=(const TextTokens &) = delete;

    /// The whole text in lower case.
    [[nodiscard]] QStringView lowerCased() const { return m_text.view(); }

    [[nodiscard]] qsizetype size() const { return m_tokens.size(); }
    [[nodiscard]] bool isEmpty() const { return m_tokens.isEmpty(); }
    [[nodiscard]] QStringView operator[](qsizetype index) const { return m_tokens[index]; }
    [[nodiscard]] auto begin() const { return m_tokens.cbegin(); }
    [[nodiscard]] auto end() const { return m_tokens.cend(); }
    [[nodiscard]] bool contains(QStringView token) const;

private:
    LowerCasedText m_text;
    QVarLengthArray<QStringView, 24> m_tokens;
};

/// Words between white space.
qsizetype whiteSpaceWordCount(QStringView text);
/// Words between white space, none of them empty, as views into `text`.
QList<QStringView> whiteSpaceWords(QStringView text);

enum class EmptyPieces { Keep, Drop };

inline constexpr qsizetype unlimitedSplits = std::numeric_limits<qsizetype>::max();

/// Cuts a text, a title say, into its segments: at every character that is neither a word character
/// nor white space. Pieces keep their surrounding spaces and are views into `text`. After
/// `mostSplits` cuts the rest is the last piece, whatever it holds; with EmptyPieces::Drop a cut
/// that would only give an empty piece does not count.
QList<QStringView> textSegments(QStringView text, qsizetype mostSplits, EmptyPieces emptyPieces);

} // namespace veltrix
