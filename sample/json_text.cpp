// SPDX-License-Identifier: GPL-3.0-or-later
// JSON values as text.
#include "sample/json_text.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace veltrix::sample
{

namespace
{

constexpr char16_t lineSeparator = 0x2028;
constexpr char16_t paragraphSeparator = 0x2029;

/// The escape of a character, or nothing if it is written as it is.
QString escapeOf(QChar character)
{
    switch (character.unicode()) {
    case u'"':
        return QStringLiteral("\\\"");
    case u'\\':
        return QStringLiteral("\\\\");
    case u'\b':
        return QStringLiteral("\\b");
    case u'\f':
        return QStringLiteral("\\f");
    case u'\n':
        return QStringLiteral("\\n");
    case u'\r':
        return QStringLiteral("\\r");
    case u'\t':
        return QStringLiteral("\\t");
    default:
        break;
    }
    const char16_t code = character.unicode();
    if (code < 0x20 || code == lineSeparator || code == paragraphSeparator)
        return QStringLiteral("\\u%1").arg(code, 4, 16, QLatin1Char('0'));
    return {};
}

} // namespace

QByteArray jsonString(QStringView text)
{
    QString quoted(QLatin1Char('"'));
    for (const QChar character : text) {
        const QString escape = escapeOf(character);
        if (escape.isEmpty())
            quoted += character;
        else
            quoted += escape;
    }
    quoted += QLatin1Char('"');
    return quoted.toUtf8();
}

QByteArray jsonStrings(const QStringList &texts)
{
    QByteArrayList items;
    for (const QString &text : texts)
        items += jsonString(text);
    return '[' + items.join(", ") + ']';
}

QByteArray jsonExactNumber(double number)
{
    // A double has at most 53 significant binary digits; 60 decimals hold all of 0 to 5 exactly.
    std::array<char, 96> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                   std::chars_format::general, 60);
    return QByteArray(buffer.data(), end.ptr - buffer.data());
}

QByteArray jsonAmount(double amount)
{
    return QByteArray::number(amount, 'f', 2);
}

} // namespace veltrix::sample
