// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/csv.h"

namespace veltrix
{

namespace
{

QString quoted(const QString &cell)
{
    const bool needsQuotes =
        cell.contains(u',') || cell.contains(u'"') || cell.contains(u'\n') || cell.contains(u'\r');
    if (!needsQuotes)
        return cell;
    QString doubled = cell;
    doubled.replace(u'"', QStringLiteral("\"\""));
    return u'"' + doubled + u'"';
}

} // namespace

QString toCsv(const QList<QStringList> &rows)
{
    QString text;
    for (const QStringList &row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (i > 0)
                text += u',';
            text += quoted(row[i]);
        }
        text += QStringLiteral("\r\n");
    }
    return text;
}

QString toTabSeparated(const QList<QStringList> &rows)
{
    QString text;
    for (const QStringList &row : rows) {
        QStringList cells = row;
        for (QString &cell : cells)
            cell.replace(u'\t', u' ').replace(u'\n', u' ').replace(u'\r', u' ');
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

QList<QStringList> fromCsv(const QString &text, QChar separator)
{
    QList<QStringList> rows;
    QStringList row;
    QString cell;
    bool inQuotes = false;
    const auto endRow = [&] {
        if (!row.isEmpty() || !cell.isEmpty())
            rows.append(row << cell);
        row.clear();
        cell.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (inQuotes) {
            if (c != u'"')
                cell += c;
            else if (text.mid(i + 1, 1) == QLatin1String("\""))
                cell += text[++i];
            else
                inQuotes = false;
        } else if (c == u'"' && cell.trimmed().isEmpty()) {
            cell.clear();
            inQuotes = true;
        } else if (c == separator) {
            row.append(cell);
            cell.clear();
        } else if (c == u'\n' || c == u'\r') {
            endRow();
        } else {
            cell += c;
        }
    }
    endRow();
    return rows;
}

} // namespace veltrix
