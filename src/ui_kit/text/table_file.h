// SPDX-License-Identifier: GPL-3.0-or-later
// Tables out of files that people keep: whatever wrote them, and in whatever encoding.
#pragma once

#include "model/error.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace veltrix
{

/// A file that holds no table, with the reason in words.
class TableFileError final : public Error
{
public:
    using Error::Error;
};

/// The text of a file. A byte order mark decides (UTF-8, UTF-16, UTF-32). Without one it is UTF-8
/// where that reads whole, else UTF-16 where one byte of most pairs is zero, else Windows-1252.
/// Throws TableFileError for what is no text: zeros in UTF-8, other control characters too in the
/// encodings that are guessed.
QString textOfFile(const QByteArray &content);

/// A character that ends a line: CR, LF, U+2028, U+2029 and the rarer ones.
[[nodiscard]] bool isLineEnd(QChar c);

struct TextRow {
    /// Where the row begins, counted from 1 as editors do.
    qsizetype line = 1;
    QStringList cells;

    bool operator==(const TextRow &) const = default;
};

/// The rows of a text. Cells are parted by what the first line that is parted at all holds most of:
/// tabs, commas or semicolons; a first line "sep=;" says it instead. A cell that begins with a
/// quotation mark runs to its closing one. Line ends of every kind end a row. Empty lines give no
/// row. Throws TableFileError with the line of a quotation mark that is not closed.
QList<TextRow> rowsOfText(const QString &text);

} // namespace veltrix
