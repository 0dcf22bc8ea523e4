// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_input.h"

#include "ui_kit/text/csv.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/text/table_file.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

/// Taking a file apart needs much more memory than the file, and the time of the window.
constexpr qsizetype mostCells = 1'000'000;

/// What parts the keywords of a text.
bool isSeparator(QChar c)
{
    return c == u',' || c == u'\t' || isLineEnd(c);
}

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

QStringList tagsIn(const QString &cell)
{
    QStringList tags;
    for (const QString &part : unguarded(cell.trimmed()).split(u';', Qt::SkipEmptyParts)) {
        const QString tag = part.simplified();
        if (!tag.isEmpty() && !tags.contains(tag, Qt::CaseInsensitive))
            tags.append(tag);
    }
    return tags;
}

KeywordFile readTable(const QList<TextRow> &rows, qsizetype keywordColumn)
{
    const QStringList &header = rows.constFirst().cells;
    const qsizetype countryColumn =
        columnNamed(header, {QStringLiteral("Storefront"), QStringLiteral("Country")});
    const qsizetype tagsColumn = columnNamed(header, {QStringLiteral("Tags")});
    const qsizetype appColumn = columnNamed(header, {QStringLiteral("App")});
    KeywordFile file;
    for (const auto &[line, cells] : rows.sliced(1)) {
        const auto afterHeader = cells.begin() + std::min(cells.size(), header.size());
        if (!std::all_of(afterHeader, cells.end(), isBlank))
            file.overlongLines.append(line);
        else if (!std::all_of(cells.begin(), cells.end(), isBlank))
            file.keywords.append({unguarded(cells.value(keywordColumn).simplified()),
                                  storefrontIn(cells.value(countryColumn)), line,
                                  tagsIn(cells.value(tagsColumn)),
                                  unguarded(cells.value(appColumn).simplified())});
    }
    return file;
}

KeywordFile readList(const QList<TextRow> &rows)
{
    KeywordFile file;
    for (const auto &[line, cells] : rows) {
        for (const QString &cell : cells) {
            for (const QString &keyword : splitKeywords(cell))
                file.keywords.append({unguarded(keyword), std::nullopt, line, {}, {}});
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
        const bool isEnd = end == text.size() || isSeparator(text[end]);
        if (!isEnd)
            continue;
        const QStringView keyword = QStringView(text).sliced(begin, end - begin).trimmed();
        if (!keyword.isEmpty())
            keywords.append(keyword.toString());
        begin = end + 1;
    }
    return keywords;
}

KeywordInText keywordAt(const QString &text, qsizetype caret)
{
    caret = std::clamp<qsizetype>(caret, 0, text.size());
    KeywordInText found{caret, caret, {}};
    while (found.begin > 0 && !isSeparator(text[found.begin - 1]))
        --found.begin;
    while (found.end < text.size() && !isSeparator(text[found.end]))
        ++found.end;
    while (found.begin < found.end && text[found.begin].isSpace())
        ++found.begin;
    while (found.end > found.begin && text[found.end - 1].isSpace())
        --found.end;
    found.keyword = text.mid(found.begin, found.end - found.begin);
    return found;
}

QList<EnteredKeyword> enteredKeywords(const QString &text)
{
    QList<EnteredKeyword> keywords;
    for (const QString &keyword : splitKeywords(text))
        keywords.append({keyword, std::nullopt, 0, {}, {}});
    return keywords;
}

KeywordFile readKeywordFile(const QByteArray &content)
{
    const QString text = textOfFile(content);
    const auto isEnd = [](QChar c) {
        return isSeparator(c) || c == u';';
    };
    if (std::count_if(text.begin(), text.end(), isEnd) > mostCells)
        throw TableFileError(
            QCoreApplication::translate("KeywordFile", "The file has more than 1,000,000 cells."));
    const QList<TextRow> rows = rowsOfText(text);
    const QStringList header = rows.value(0).cells;
    const qsizetype keywordColumn =
        columnNamed(header, {QStringLiteral("Keyword"), QStringLiteral("Keywords")});
    if (keywordColumn < 0)
        return readList(rows);
    // A heading alone leaves its lines a list: they may hold commas that part nothing above.
    return header.size() == 1 ? readList(rows.sliced(1)) : readTable(rows, keywordColumn);
}

} // namespace veltrix
