// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/request_url.h"

#include "clients/http.h"

namespace veltrix
{

QUrl requestUrl(const QUrl &base, const QString &path, const QList<QueryItem> &query)
{
    const bool isHttp =
        base.scheme() == QLatin1String("https") || base.scheme() == QLatin1String("http");
    if (!base.isValid() || !isHttp || base.host().isEmpty())
        throw BadUrlError();

    QUrl url = base;
    QString fullPath = base.path(QUrl::FullyEncoded);
    if (!path.isEmpty()) {
        if (!fullPath.endsWith(u'/'))
            fullPath += u'/';
        fullPath += path;
    }
    url.setPath(fullPath, QUrl::StrictMode);

    QStringList items;
    items.reserve(query.size());
    for (const QueryItem &item : query) {
        items.append(QString::fromLatin1(QUrl::toPercentEncoding(item.name)) + u'=' +
                     QString::fromLatin1(QUrl::toPercentEncoding(item.value)));
    }
    if (!items.isEmpty())
        url.setQuery(items.join(u'&'), QUrl::StrictMode);
    if (!url.isValid())
        throw BadUrlError();
    return url;
}

QString absoluteString(const QUrl &url)
{
    return url.toString(QUrl::FullyEncoded);
}

} // namespace veltrix
