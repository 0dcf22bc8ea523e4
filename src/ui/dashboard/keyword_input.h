// SPDX-License-Identifier: GPL-3.0-or-later
// Keywords out of what people type, paste and keep in files.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace veltrix
{

/// Splits at commas, and at tabs and line breaks, so that lists and spreadsheet columns can be
/// pasted. Each piece is trimmed; empty ones are dropped, and those that were there already,
/// ignoring case.
QStringList splitKeywords(const QString &text);

struct ImportedKeyword {
    QString keyword;
    /// The storefront, where the file names one for the keyword: an upper-cased code, or what
    /// stands there when that is no storefront.
    std::optional<QString> country;

    bool operator==(const ImportedKeyword &) const = default;
};

/// Keywords of a text or CSV file. A first line that holds a cell "Keyword" makes it a table: the
/// keywords are in that column, storefront codes in a column "Storefront" or "Country". Any other
/// file is a list, parted by commas, tabs and line breaks.
QList<ImportedKeyword> keywordsFromFile(const QByteArray &content);

} // namespace veltrix
