// SPDX-License-Identifier: GPL-3.0-or-later
// Tables as text: comma-separated files and tab-separated copies.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace veltrix
{

/// Rows as RFC 4180 writes them: cells that hold a comma, a quotation mark or a line break are
/// quoted, lines end with CR LF.
QString toCsv(const QList<QStringList> &rows);

/// Rows for the clipboard: cells parted by tabs, rows by line feeds. Tabs and line breaks inside
/// cells become spaces.
QString toTabSeparated(const QList<QStringList> &rows);

/// Reads separated text, quoted cells included; line breaks of every kind end a row, and a
/// missing last quotation mark ends with the text. Empty lines give no row.
QList<QStringList> fromCsv(const QString &text, QChar separator = u',');

} // namespace veltrix
