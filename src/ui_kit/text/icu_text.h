// SPDX-License-Identifier: GPL-3.0-or-later
// Between Qt's texts and locales and ICU's.
#pragma once

#include <QLocale>
#include <QString>

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace veltrix
{

inline QString fromIcu(const icu::UnicodeString &text)
{
    // QString::fromUtf16() would take a U+FEFF at the start for the mark of a file.
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}

inline icu::Locale icuLocale(const QLocale &locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const QByteArray tag = locale.bcp47Name().toLatin1();
    icu::Locale converted = icu::Locale::forLanguageTag(tag.constData(), status);
    return U_SUCCESS(status) ? converted : icu::Locale::getEnglish();
}

} // namespace veltrix
