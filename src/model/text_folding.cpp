// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/text_folding.h"

#include <unicode/unistr.h>

namespace veltrix
{

namespace
{

/// A mark that may stand on letters of every script, and so is none of their own. Japanese voicing
/// is shared by two scripts and still makes another letter.
bool isAccent(QChar c)
{
    const bool isVoicing = c == QChar(u'\u3099') || c == QChar(u'\u309A');
    return c.category() == QChar::Mark_NonSpacing && c.script() == QChar::Script_Inherited &&
           !isVoicing;
}

} // namespace

QString foldedCase(const QString &text)
{
    return text.toCaseFolded();
}

QString foldedForSearch(const QString &text)
{
    QString bare = text.normalized(QString::NormalizationForm_KD);
    bare.removeIf(isAccent);
    // ICU folds whole ("ß" as "ss"), Qt only letter by letter.
    icu::UnicodeString folded(reinterpret_cast<const char16_t *>(bare.utf16()),
                              int32_t(bare.size()));
    folded.foldCase();
    // QString::fromUtf16() would take a U+FEFF at the start for the mark of a file.
    return QString(reinterpret_cast<const QChar *>(folded.getBuffer()), folded.length());
}

} // namespace veltrix
