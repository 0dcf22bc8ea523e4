// SPDX-License-Identifier: GPL-3.0-or-later
// Addresses of requests, with queries that every server reads the same way.
#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace veltrix
{

/// One name of a query with its value, neither encoded.
struct QueryItem {
    QString name;
    QString value;
};

/// `base` with `path` appended and the query items in their order. Everything in a value but
/// letters, digits, "-", ".", "_" and "~" is percent-encoded, "+" too, which some servers read as a
/// space. Throws BadUrlError when `base` is not an absolute http or https URL.
QUrl requestUrl(const QUrl &base, const QString &path, const QList<QueryItem> &query);

/// The whole URL as it goes over the wire.
QString absoluteString(const QUrl &url);

} // namespace veltrix
