// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/retry_after.h"

#include <QRegularExpression>

namespace veltrix
{

std::optional<Seconds> retryAfter(const HttpResponse &response)
{
    const std::optional<QByteArray> header = response.header("Retry-After");
    if (!header)
        return std::nullopt;
    static const QRegularExpression number(QStringLiteral("\\A[+-]?[0-9]+(\\.[0-9]+)?\\z"));
    const QString text = QString::fromLatin1(header->trimmed());
    if (!number.match(text).hasMatch())
        return std::nullopt;
    bool isRepresentable = false;
    const double seconds = text.toDouble(&isRepresentable);
    if (!isRepresentable)
        return std::nullopt;
    return Seconds(seconds);
}

} // namespace veltrix
