// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a file of keywords, in any encoding: refused, or keywords of one line each. What
// Veltrix writes of its rows reads as the same rows.
#include "fuzz_target.h"
#include "ui/dashboard/keyword_input.h"
#include "ui_kit/text/csv.h"
#include "ui_kit/text/table_file.h"

#include <algorithm>

namespace
{

using namespace veltrix;

void checkText(const QString &text)
{
    const QStringList keywords = splitKeywords(text);
    for (const QString &keyword : keywords)
        fuzz::require(!keyword.isEmpty() && keyword == keyword.trimmed(),
                      "a keyword has no space around it");
    fuzz::require(splitKeywords(keywords.join(QStringLiteral(", "))) == keywords,
                  "keywords split as they were joined");
    for (const qsizetype caret : {qsizetype(0), text.size() / 2, text.size()}) {
        const KeywordInText found = keywordAt(text, caret);
        fuzz::require(found.begin >= 0 && found.begin <= found.end && found.end <= text.size() &&
                          text.mid(found.begin, found.end - found.begin) == found.keyword,
                      "a keyword stands where it is said to stand");
    }
}

void checkRows(const QString &text)
{
    QList<QStringList> cells;
    qsizetype line = 0;
    for (const TextRow &row : rowsOfText(text)) {
        fuzz::require(!row.cells.isEmpty() && row.line > line, "rows are in the order of lines");
        line = row.line;
        cells.append(row.cells);
    }
    // Empty rows give none, and a single cell does not show what parts cells.
    if (std::any_of(cells.begin(), cells.end(),
                    [](const QStringList &row) { return row.size() < 2; }))
        return;
    QList<QStringList> read;
    for (const TextRow &row : rowsOfText(textOfFile(toCsvFile(cells)))) {
        QStringList unguardedCells;
        for (const QString &cell : row.cells)
            unguardedCells.append(unguarded(cell));
        read.append(unguardedCells);
    }
    fuzz::require(read == cells, "a written table reads as it was");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray content = fuzz::bytesOf(data, size);
    fuzz::isAccepted([&] {
        const KeywordFile file = readKeywordFile(content);
        for (const EnteredKeyword &entered : file.keywords) {
            fuzz::require(entered.keyword == entered.keyword.trimmed() || entered.line > 0,
                          "a keyword has no space around it");
            fuzz::require(std::none_of(entered.keyword.begin(), entered.keyword.end(), isLineEnd),
                          "a keyword is one line");
        }
    });
    fuzz::isAccepted([&] {
        const QString text = textOfFile(content);
        checkText(text);
        checkRows(text);
    });
    return 0;
}
