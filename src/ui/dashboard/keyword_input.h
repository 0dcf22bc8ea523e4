// SPDX-License-Identifier: GPL-3.0-or-later
// Keywords out of what people type, paste and keep in files.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace veltrix
{

/// A keyword as it was entered.
struct EnteredKeyword {
    QString keyword;
    /// The storefront, where a file names one for the keyword: an upper-cased code, or what stands
    /// there when that is no storefront.
    std::optional<QString> country = std::nullopt;
    /// The line of the file; 0 for what was typed.
    qsizetype line = 0;
    /// The tags that a file gives it, each once, ignoring case.
    QStringList tags = {};
    /// The app that a file says the keyword is of; empty where it says none.
    QString app = {};

    bool operator==(const EnteredKeyword &) const = default;
};

/// Splits at commas, and at tabs and line ends, so that lists and spreadsheet columns can be
/// pasted. Each piece is trimmed; empty ones are dropped.
QStringList splitKeywords(const QString &text);
QList<EnteredKeyword> enteredKeywords(const QString &text);

/// One of the keywords of a text, and where it stands there.
struct KeywordInText {
    qsizetype begin = 0;
    /// Behind its last character.
    qsizetype end = 0;
    /// Trimmed; empty between two separators.
    QString keyword;

    bool operator==(const KeywordInText &) const = default;
};

/// The keyword in which, or at the end of which, the caret stands before character `caret`.
KeywordInText keywordAt(const QString &text, qsizetype caret);

/// A text or CSV file as a list of keywords.
struct KeywordFile {
    QList<EnteredKeyword> keywords;
    /// Lines that have more cells than the header: what of them is the keyword cannot be known.
    QList<qsizetype> overlongLines;

    bool operator==(const KeywordFile &) const = default;
};

/// Reads a file. A first line that holds a cell "Keyword" or "Keywords", and others beside it,
/// makes it a table: the keywords are in that column, storefronts, by code or name, in a column
/// "Storefront" or "Country", tags, parted by semicolons, in a column "Tags", the name of the app
/// in a column "App". A line of a table without a keyword gives an empty one. Any other file is a
/// list, parted by commas, semicolons, tabs and line ends. Throws TableFileError, also for
/// more than a million cells.
KeywordFile readKeywordFile(const QByteArray &content);

} // namespace veltrix
