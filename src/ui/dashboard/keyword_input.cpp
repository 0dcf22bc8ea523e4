// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_input.h"

#include "ui_kit/text/csv.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/text/table_file.h"

#include <algorithm>

namespace veltrix
{

namespace
{

qsizetype columnNamed(const QStringList &header, const QStringList &names)
{
    const auto named = [&names](const QString &cell) {
        return names.contains(cell.trimmed(), Qt::CaseInsensitive);
    };
    const auto found = std::find_if(header.begin(), header.end(), named);
    return found == header.end() ? -1 : found - header.begin();
}

bool isBlank(const QString &cell)
{
    return cell.trimmed().isEmpty();
}

std::optional<QString> storefrontIn(const QString &cell)
{
    return isBlank(cell) ? std::nullopt
                         : std::optional(storefrontNamed(cell).value_or(cell.trimmed()));
}

KeywordFile readTable(const QList<TextRow> &rows, qsizetype keywordColumn)
{
    const QStringList &header = rows.constFirst().cells;
    const qsizetype countryColumn =
        columnNamed(header, {QStringLiteral("Storefront"), QStringLiteral("Country")});
    KeywordFile file;
    for (const auto &[line, cells] : rows.sliced(1)) {
        const auto afterHeader = cells.begin() + std::min(cells.size(), header.size());
        if (!std::all_of(afterHeader, cells.end(), isBlank))
            file.overlongLines.append(line);
        else if (!std::all_of(cells.begin(), cells.end(), isBlank))
            file.keywords.append({unguarded(cells.value(keywordColumn).simplified()),
                                  storefrontIn(cells.value(countryColumn)), line});
    }
    return file;
}

KeywordFile readList(const QList<TextRow> &rows)
{
    KeywordFile file;
    for (const auto &[line, cells] : rows) {
        for (const QString &cell : cells) {
            for (const QString &keyword : splitKeywords(cell))
                file.keywords.append({unguarded(keyword), std::nullopt, line});
        }
    }
    return file;
}

} // namespace

QStringList splitKeywords(const QString &text)
{
    QStringList keywords;
    qsizetype begin = 0;
    for (qsizetype end = 0; end <= text.size(); ++end) {
        const bool isEnd =
            end == text.size() || text[end] == u',' || text[end] == u'\t' || isLineEnd(text[end]);
        if (!isEnd)
            continue;
        const QStringView keyword = QStringView(text).sliced(begin, end - begin).trimmed();
        if (!keyword.isEmpty())
            keywords.append(keyword.toString());
        begin = end + 1;
    }
    return keywords;
}

QList<EnteredKeyword> enteredKeywords(const QString &text)
{
    QList<EnteredKeyword> keywords;
    for (const QString &keyword : splitKeywords(text))
        keywords.append({keyword});
    return keywords;
}

KeywordFile readKeywordFile(const QByteArray &content)
{
    const QList<TextRow> rows = rowsOfText(textOfFile(content));
    const QStringList header = rows.value(0).cells;
    const qsizetype keywordColumn =
        columnNamed(header, {QStringLiteral("Keyword"), QStringLiteral("Keywords")});
    if (keywordColumn < 0)
        return readList(rows);
    // A heading alone leaves its lines a list: they may hold commas that part nothing above.
    return header.size() == 1 ? readList(rows.sliced(1)) : readTable(rows, keywordColumn);
}

} // namespace veltrix
