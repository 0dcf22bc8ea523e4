// SPDX-License-Identifier: GPL-3.0-or-later
// JSON values as text.
#include "sample/json_text.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <array>
#include <charconv>
#include <cstddef>

namespace veltrix::sample
{

QByteArray jsonString(QStringView text)
{
    const QByteArray array =
        QJsonDocument(QJsonArray{text.toString()}).toJson(QJsonDocument::Compact);
    // The services also escape the separators that JSON lets stand and JavaScript does not.
    return array.sliced(1, array.size() - 2)
        .replace("\u2028", "\\u2028")
        .replace("\u2029", "\\u2029");
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
