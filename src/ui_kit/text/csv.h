// SPDX-License-Identifier: GPL-3.0-or-later
// Tables as text that is written: files for spreadsheets, and tab-separated copies.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace veltrix
{

/// A file that spreadsheets open as it is meant: UTF-8 with a byte order mark, rows as RFC 4180
/// writes them (cells that hold a separator, a quotation mark or a line end are quoted, lines end
/// with CR LF), every cell guarded().
QByteArray toCsvFile(const QList<QStringList> &rows);
/// More rows for the end of such a file.
QByteArray toCsvRows(const QList<QStringList> &rows);

/// The cell with an apostrophe before it where a spreadsheet would calculate it: it begins with
/// =, +, -, @, a tab or a line end. A plain number stays one.
QString guarded(const QString &cell);
/// What guarded() made the cell of.
QString unguarded(const QString &cell);

/// Rows for the clipboard: cells parted by tabs, rows by line feeds. Tabs and line ends inside
/// cells become spaces.
QString toTabSeparated(const QList<QStringList> &rows);

} // namespace veltrix
