// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/folding.h"

#include "ui_kit/text/icu_text.h"

namespace veltrix
{

QString foldedForSearch(const QString &text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString bare;
    bare.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        // Only the marks that decoration adds; the vowel signs of Thai or Hindi are letters there.
        const bool decoration =
            c.category() == QChar::Mark_NonSpacing && c.script() == QChar::Script_Inherited;
        if (!decoration)
            bare.append(c);
    }
    // ICU folds whole ("ß" as "ss"), Qt only letter by letter.
    icu::UnicodeString folded(reinterpret_cast<const char16_t *>(bare.utf16()),
                              int32_t(bare.size()));
    return fromIcu(folded.foldCase());
}

} // namespace veltrix
