// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/text_tokens.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace veltrix
{

namespace
{

/// Plurals that count as their singular, which is each of them without its last letter.
constexpr std::array<std::u16string_view, 4> mappedPlurals{u"options", u"stocks", u"signals",
                                                           u"markets"};

constexpr unsigned categories(std::initializer_list<QChar::Category> list)
{
    unsigned bits = 0;
    for (const QChar::Category category : list)
        bits |= 1U << unsigned(category);
    return bits;
}

constexpr unsigned letters =
    categories({QChar::Letter_Uppercase, QChar::Letter_Lowercase, QChar::Letter_Titlecase,
                QChar::Letter_Modifier, QChar::Letter_Other});
constexpr unsigned marks =
    categories({QChar::Mark_NonSpacing, QChar::Mark_SpacingCombining, QChar::Mark_Enclosing});
constexpr unsigned digits =
    categories({QChar::Number_DecimalDigit, QChar::Number_Letter, QChar::Number_Other});

bool hasCategory(char32_t character, unsigned accepted)
{
    return (accepted & (1U << unsigned(QChar::category(character)))) != 0;
}

constexpr bool isAsciiLetter(char32_t c)
{
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z');
}

constexpr bool isAsciiDigit(char32_t c)
{
    return c >= U'0' && c <= U'9';
}

/// Calls `take` with each non-empty piece between the code points that `isSeparator` names.
template <class IsSeparator, class Take>
void forEachPiece(QStringView text, IsSeparator isSeparator, Take take)
{
    qsizetype start = 0;
    for (qsizetype position = 0; position < text.size();) {
        const qsizetype here = position;
        if (!isSeparator(takeCodePoint(text, position)))
            continue;
        if (here > start)
            take(text.sliced(start, here - start));
        start = position;
    }
    if (start < text.size())
        take(text.sliced(start));
}

QStringView singular(QStringView token)
{
    const auto same = [token](std::u16string_view plural) {
        return token == QStringView(plural);
    };
    return std::any_of(mappedPlurals.begin(), mappedPlurals.end(), same) ? token.chopped(1) : token;
}

} // namespace

bool isLetter(char32_t character)
{
    return character < 0x80 ? isAsciiLetter(character) : hasCategory(character, letters);
}

bool isWordCharacter(char32_t character)
{
    if (character < 0x80)
        return isAsciiLetter(character) || isAsciiDigit(character);
    return hasCategory(character, letters | marks | digits);
}

bool isWhiteSpace(char32_t c)
{
    return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F ||
           c == 0x205F || c == 0x3000;
}

qsizetype codePointCount(QStringView text)
{
    qsizetype count = 0;
    for (qsizetype position = 0; position < text.size(); ++count)
        takeCodePoint(text, position);
    return count;
}

LowerCasedText::LowerCasedText(QStringView text)
{
    qsizetype position = 0;
    m_text.resize(text.size());
    for (; position < text.size() && text[position].unicode() < 0x80; ++position) {
        const char16_t character = text[position].unicode();
        const bool upper = character >= u'A' && character <= u'Z';
        m_text[position] = upper ? char16_t(character + (u'a' - u'A')) : character;
    }
    // Beyond the first character that is not ASCII the lengths may differ.
    m_text.resize(position);
    while (position < text.size())
        append(takeCodePoint(text, position));
}

void LowerCasedText::append(char32_t character)
{
    if (character == 0x130) {
        // The one character whose lower-case form is two: i and a dot above.
        m_text.append(u'i');
        m_text.append(u'\u0307');
        return;
    }
    const char32_t lower = QChar::toLower(character);
    if (QChar::requiresSurrogates(lower)) {
        m_text.append(QChar::highSurrogate(lower));
        m_text.append(QChar::lowSurrogate(lower));
    } else {
        m_text.append(char16_t(lower));
    }
}

TextTokens::TextTokens(QStringView text, TokenRule rule) : m_text(text)
{
    if (rule == TokenRule::Relevance) {
        forEachPiece(
            m_text.view(), [](char32_t c) { return !isWordCharacter(c); },
            [this](QStringView piece) { m_tokens.append(singular(piece)); });
    } else {
        forEachPiece(
            m_text.view(), [](char32_t c) { return c == U'-' || isWhiteSpace(c); },
            [this](QStringView piece) { m_tokens.append(piece); });
    }
}

bool TextTokens::contains(QStringView token) const
{
    return std::find(begin(), end(), token) != end();
}

qsizetype whiteSpaceWordCount(QStringView text)
{
    qsizetype count = 0;
    forEachPiece(text, isWhiteSpace, [&count](QStringView) { ++count; });
    return count;
}

QList<QStringView> whiteSpaceWords(QStringView text)
{
    QList<QStringView> words;
    forEachPiece(text, isWhiteSpace, [&words](QStringView word) { words.append(word); });
    return words;
}

QList<QStringView> textSegments(QStringView text, qsizetype mostSplits, EmptyPieces emptyPieces)
{
    QList<QStringView> segments;
    const auto keep = [&](QStringView piece) {
        if (!piece.isEmpty() || emptyPieces == EmptyPieces::Keep)
            segments.append(piece);
    };
    qsizetype start = 0;
    for (qsizetype position = 0; position < text.size() && segments.size() < mostSplits;) {
        const qsizetype here = position;
        const char32_t character = takeCodePoint(text, position);
        if (isWordCharacter(character) || isWhiteSpace(character))
            continue;
        keep(text.sliced(start, here - start));
        start = position;
    }
    keep(text.sliced(start));
    return segments;
}

} // namespace veltrix
