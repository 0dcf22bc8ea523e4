// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/http.h"

namespace veltrix
{

std::optional<QByteArray> HttpResponse::header(QByteArrayView name) const
{
    for (const HttpHeader &header : headers) {
        if (QByteArrayView(header.name).compare(name, Qt::CaseInsensitive) == 0)
            return header.value;
    }
    return std::nullopt;
}

BadUrlError::BadUrlError() : Error(QStringLiteral("The address of the request is not valid.")) {}

BadServerResponseError::BadServerResponseError(int status)
    : Error(QStringLiteral("The server answered with an error (%1).").arg(status))
{
}

UnreadableAnswerError::UnreadableAnswerError(const QString &host)
    : Error(QStringLiteral("The answer of the server “%1” could not be read. If this network asks "
                           "you to sign in, do so in a web browser and try again.")
                .arg(host))
{
}

} // namespace veltrix
