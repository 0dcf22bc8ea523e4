// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/app_table.h"

#include <stdexcept>

namespace veltrix
{

namespace
{

QStringList cellsOf(const QString &line)
{
    QStringList cells;
    for (const QString &cell : line.split(u'|'))
        cells.append(cell.trimmed());
    return cells;
}

double number(const QString &cell)
{
    bool isNumber = false;
    const double value = cell.toDouble(&isNumber);
    if (!isNumber)
        throw std::invalid_argument("not a number: " + cell.toStdString());
    return value;
}

std::int64_t integer(const QString &cell)
{
    bool isNumber = false;
    const std::int64_t value = cell.toLongLong(&isNumber);
    if (!isNumber)
        throw std::invalid_argument("not an integer: " + cell.toStdString());
    return value;
}

void setField(ITunesAppResult &app, const QString &column, const QString &cell)
{
    if (column == u"id")
        app.trackId = integer(cell);
    else if (column == u"name")
        app.trackName = cell;
    else if (column == u"subtitle")
        app.subtitle = cell;
    else if (column == u"genre")
        app.primaryGenreName = cell;
    else if (column == u"seller")
        app.sellerName = cell;
    else if (column == u"ratings")
        app.userRatingCount = integer(cell);
    else if (column == u"stars")
        app.averageUserRating = number(cell);
    else if (column == u"released")
        app.releaseDate = cell;
    else if (column == u"icon")
        app.artworkUrl100 = cell;
    else
        throw std::invalid_argument("no such column: " + column.toStdString());
}

} // namespace

Date testNow()
{
    return *parseInternetDateTime(u"2026-11-21T12:00:00Z");
}

QList<ITunesAppResult> appTable(const QString &table)
{
    QList<ITunesAppResult> apps;
    QStringList columns;
    for (const QString &line : table.split(u'\n')) {
        if (line.trimmed().isEmpty())
            continue;
        const QStringList cells = cellsOf(line);
        if (columns.isEmpty()) {
            columns = cells;
            continue;
        }
        if (cells.size() != columns.size())
            throw std::invalid_argument("a line of another length: " + line.toStdString());
        ITunesAppResult app;
        std::int64_t times = 1;
        for (qsizetype i = 0; i < columns.size(); ++i) {
            if (columns[i] == u"times")
                times = integer(cells[i]);
            else if (cells[i] != u"-")
                setField(app, columns[i], cells[i]);
        }
        apps.append(QList<ITunesAppResult>(times, app));
    }
    return apps;
}

} // namespace veltrix
