// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/keyword_rule.h"

#include "model/storefront_codes.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// Characters of the text as the search sees it: lower case may need more of them than were typed.
qsizetype characterCount(const QString &trimmed)
{
    return std::max(trimmed.toUcs4().size(), trimmed.toLower().toUcs4().size());
}

} // namespace

std::optional<KeywordRefusal> keywordRefusal(const QString &text, const QString &country)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return KeywordRefusal::Empty;
    if (characterCount(trimmed) > longestKeyword)
        return KeywordRefusal::TooLong;
    const auto isControl = [](QChar c) {
        return c.category() == QChar::Other_Control;
    };
    if (std::any_of(trimmed.begin(), trimmed.end(), isControl))
        return KeywordRefusal::ControlCharacter;
    if (!isStorefrontCode(country))
        return KeywordRefusal::UnknownStorefront;
    return std::nullopt;
}

} // namespace veltrix
