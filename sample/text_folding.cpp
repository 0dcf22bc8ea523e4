// SPDX-License-Identifier: GPL-3.0-or-later
// Makes texts comparable the way a store search compares them.
#include "sample/text_folding.h"

#include <QChar>

namespace veltrix::sample
{

namespace
{

/// Marks that are accents. Marks of other scripts (Thai vowels, Kana voicing) make the word.
bool isAccent(char32_t code)
{
    const bool latin = code >= 0x0300 && code <= 0x036F;
    const bool arabic = (code >= 0x064B && code <= 0x0655) || code == 0x0670 || code == 0x0640;
    return latin || arabic;
}

/// One letter for those that writers use for one another.
char32_t commonLetter(char32_t code)
{
    switch (code) {
    case 0x0131: // dotless i
        return U'i';
    case 0x0629: // teh marbuta, for heh
        return 0x0647;
    case 0x0649: // alef maksura, for yeh
        return 0x064A;
    default:
        return code;
    }
}

bool belongsToWord(char32_t code)
{
    return QChar::isLetterOrNumber(code) || QChar::isMark(code);
}

QString caselessDecomposed(const QString &text)
{
    return text.toCaseFolded().normalized(QString::NormalizationForm_KD);
}

} // namespace

QString folded(QStringView text)
{
    // Decomposing can bring out capitals ("℃" is "°C"), and folding can bring out accents.
    const QString decomposed = caselessDecomposed(caselessDecomposed(text.toString()));
    QString kept;
    kept.reserve(decomposed.size());
    for (const char32_t code : decomposed.toUcs4()) {
        if (isAccent(code))
            continue;
        const char32_t letter = belongsToWord(code) ? commonLetter(code) : U' ';
        kept += QString::fromUcs4(&letter, 1);
    }
    return kept.normalized(QString::NormalizationForm_C).simplified();
}

QStringList foldedWords(QStringView text)
{
    return folded(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool isSearchedByParts(QStringView word)
{
    if (word.isEmpty())
        return false;
    switch (QChar::script(word.toUcs4().front())) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Hangul:
    case QChar::Script_Thai:
        return true;
    default:
        return false;
    }
}

} // namespace veltrix::sample
