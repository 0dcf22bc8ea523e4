// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/csv.h"

#include "ui_kit/text/table_file.h"

#include <algorithm>

namespace veltrix
{

namespace
{

QString quoted(const QString &cell)
{
    const bool needsQuotes = std::any_of(cell.begin(), cell.end(), [](QChar c) {
        return c == u',' || c == u';' || c == u'\t' || c == u'"' || isLineEnd(c);
    });
    if (!needsQuotes)
        return cell;
    QString doubled = cell;
    doubled.replace(u'"', QStringLiteral("\"\""));
    return u'"' + doubled + u'"';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// A sign or none, digits, and no more than one point or comma between them.
bool isPlainNumber(QStringView cell)
{
    if (cell.startsWith(u'-') || cell.startsWith(u'+'))
        cell = cell.mid(1);
    const bool isWrapped = !cell.isEmpty() && isDigit(cell.front()) && isDigit(cell.back());
    const auto others =
        std::count_if(cell.begin(), cell.end(), [](QChar c) { return !isDigit(c); });
    return isWrapped &&
           (others == 0 || (others == 1 && (cell.contains(u'.') || cell.contains(u','))));
}

/// Whether a formula stands there, behind apostrophes or none.
bool holdsFormula(QStringView cell)
{
    while (cell.startsWith(u'\''))
        cell = cell.mid(1);
    // Spreadsheets take the wide forms, which Chinese and Japanese keyboards type, for the others.
    return !cell.isEmpty() &&
           (QStringView(u"=+-@\t＝＋－＠").contains(cell.front()) || isLineEnd(cell.front()));
}

} // namespace

QByteArray toCsvFile(const QList<QStringList> &rows)
{
    return QString(QChar::ByteOrderMark).toUtf8() + toCsvRows(rows);
}

QByteArray toCsvRows(const QList<QStringList> &rows)
{
    QString text;
    for (const QStringList &row : rows) {
        for (qsizetype i = 0; i < row.size(); ++i) {
            if (i > 0)
                text += u',';
            text += quoted(guarded(row[i]));
        }
        text += QStringLiteral("\r\n");
    }
    return text.toUtf8();
}

QString guarded(const QString &cell)
{
    return holdsFormula(cell) && !isPlainNumber(cell) ? u'\'' + cell : cell;
}

QString unguarded(const QString &cell)
{
    return cell.startsWith(u'\'') && holdsFormula(cell) ? cell.mid(1) : cell;
}

QString toTabSeparated(const QList<QStringList> &rows)
{
    QString text;
    for (const QStringList &row : rows) {
        QStringList cells = row;
        for (QString &cell : cells) {
            for (QChar &c : cell) {
                if (c == u'\t' || isLineEnd(c))
                    c = u' ';
            }
        }
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

} // namespace veltrix
