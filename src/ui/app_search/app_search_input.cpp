// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/app_search/app_search_input.h"

#include "ui_kit/text/table_file.h"

#include <QStringList>
#include <QUrl>

#include <algorithm>

namespace veltrix
{

namespace
{

const QString idMark = QStringLiteral("id");

/// A base-10 integer of 64 bits: an optional sign and ASCII digits, nothing else.
std::optional<std::int64_t> wholeNumber(QStringView text)
{
    QStringView digits = text;
    if (digits.startsWith(u'+') || digits.startsWith(u'-'))
        digits = digits.mid(1);
    const bool onlyDigits =
        !digits.isEmpty() &&
        std::all_of(digits.begin(), digits.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!onlyDigits)
        return std::nullopt;
    bool fits = false;
    const qlonglong value = text.toString().toLongLong(&fits, 10);
    return fits ? std::optional<std::int64_t>(value) : std::nullopt;
}

/// The ID of an App Store link, with or without its scheme.
std::optional<std::int64_t> idOfLink(const QString &trimmed)
{
    QString address = trimmed;
    if (address.startsWith(QLatin1String("apps.apple.com/"), Qt::CaseInsensitive))
        address.prepend(QStringLiteral("https://"));
    const QUrl url(address);
    if (!url.isValid() ||
        (url.scheme() != QLatin1String("https") && url.scheme() != QLatin1String("http")))
        return std::nullopt;
    const QStringList components = url.path().split(u'/', Qt::SkipEmptyParts);
    for (auto it = components.crbegin(); it != components.crend(); ++it) {
        if (it->startsWith(idMark, Qt::CaseInsensitive) && it->size() > 2 && it->at(2).isDigit()) {
            if (const auto id = wholeNumber(QStringView(*it).mid(2)))
                return id;
        }
    }
    return std::nullopt;
}

QString digitsFrom(QStringView text)
{
    const auto end = std::find_if(text.begin(), text.end(), [](QChar c) { return !c.isDigit(); });
    return text.left(end - text.begin()).toString();
}

} // namespace

AppSearchInput parseAppSearch(const QString &text)
{
    QString oneLine = text;
    std::replace_if(oneLine.begin(), oneLine.end(), isLineEnd, u' ');
    const QString trimmed = oneLine.trimmed();
    AppSearchInput input;
    input.name = trimmed;
    const auto found = [&input](std::int64_t id, AppSearchInput::Origin origin) {
        input.trackId = id;
        input.origin = origin;
        return input;
    };
    using Origin = AppSearchInput::Origin;

    if (const auto id = idOfLink(trimmed))
        return found(*id, Origin::Explicit);
    const QString lower = trimmed.toLower();
    if (const auto id = wholeNumber(lower))
        return found(*id, Origin::Explicit);
    if (lower.startsWith(idMark)) {
        if (const auto id = wholeNumber(QStringView(lower).mid(2)))
            return found(*id, Origin::Explicit);
    }
    const qsizetype mark = lower.indexOf(idMark);
    if (mark >= 0) {
        if (const auto id = wholeNumber(digitsFrom(QStringView(lower).mid(mark + 2))))
            return found(*id, Origin::Explicit);
    }
    QString digits;
    std::copy_if(lower.begin(), lower.end(), std::back_inserter(digits),
                 [](QChar c) { return c.isDigit(); });
    if (const auto id = wholeNumber(digits))
        return found(*id, Origin::CollectedDigits);
    return input;
}

} // namespace veltrix
