// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/app_keyword_check.h"

#include "scoring/text_tokens.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace veltrix
{

namespace
{

constexpr std::u16string_view stopWords[] = {
    u"a",    u"an",   u"the", u"and", u"or",   u"for",  u"of",  u"to", u"in",
    u"with", u"your", u"my",  u"app", u"apps", u"free", u"pro", u"by",
};
/// Words a phrase, in the order in which phrases are made.
constexpr std::array<qsizetype, 3> phraseLengths{2, 1, 3};
/// Characters.
constexpr qsizetype shortestPhrase = 3;
constexpr qsizetype longestPhrase = 100;

bool isStopWord(QStringView word)
{
    return std::any_of(std::begin(stopWords), std::end(stopWords),
                       [word](std::u16string_view stop) { return word == QStringView(stop); });
}

bool hasLetter(QStringView text)
{
    for (qsizetype position = 0; position < text.size();) {
        if (isLetter(takeCodePoint(text, position)))
            return true;
    }
    return false;
}

bool isAcceptable(QStringView phrase)
{
    const qsizetype length = codePointCount(phrase);
    return length >= shortestPhrase && length <= longestPhrase && hasLetter(phrase);
}

QString joined(std::span<const QStringView> words)
{
    QString phrase;
    for (const QStringView word : words) {
        if (!phrase.isEmpty())
            phrase += u' ';
        phrase += word;
    }
    return phrase;
}

/// Adds the phrases of `length` words that are new, until the list is full.
void addPhrases(std::span<const QStringView> words, size_t length, QStringList &phrases)
{
    for (size_t start = 0; start + length <= words.size(); ++start) {
        if (phrases.size() == keywordPhraseLimit)
            return;
        const auto run = words.subspan(start, length);
        if (isStopWord(run.front()) || isStopWord(run.back()))
            continue;
        const QString phrase = joined(run);
        if (isAcceptable(phrase) && !phrases.contains(phrase))
            phrases.append(phrase);
    }
}

} // namespace

QStringList keywordPhrases(const ITunesAppResult &app)
{
    QStringList phrases;
    for (const auto *text : {&app.trackName, &app.subtitle, &app.primaryGenreName}) {
        const LowerCasedText lowerCased(viewOf(*text));
        const auto segments = textSegments(lowerCased.view(), unlimitedSplits, EmptyPieces::Drop);
        for (const QStringView segment : segments) {
            const QList<QStringView> words = whiteSpaceWords(segment);
            for (const qsizetype length : phraseLengths)
                addPhrases(words, size_t(length), phrases);
        }
    }
    return phrases;
}

} // namespace veltrix
