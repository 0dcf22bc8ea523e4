// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_input.h"

#include "model/storefront_codes.h"
#include "model/text_folding.h"
#include "ui_kit/text/csv.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringDecoder>

namespace veltrix
{

namespace
{

QString decoded(const QByteArray &content)
{
    // A byte order mark decides; otherwise it is UTF-8.
    const auto encoding = QStringConverter::encodingForData(content);
    QStringDecoder decoder(encoding.value_or(QStringConverter::Utf8));
    const QString text = decoder.decode(content);
    return text;
}

qsizetype columnNamed(const QStringList &header, const QStringList &names)
{
    for (qsizetype i = 0; i < header.size(); ++i) {
        if (names.contains(header[i].trimmed(), Qt::CaseInsensitive))
            return i;
    }
    return -1;
}

std::optional<QString> storefrontIn(const QString &cell)
{
    const QString name = cell.trimmed();
    if (name.isEmpty())
        return std::nullopt;
    return isStorefrontCode(name) ? name.toUpper() : name;
}

} // namespace

QStringList splitKeywords(const QString &text)
{
    static const QRegularExpression separators(
        QStringLiteral("[,\\t\\n\\r\\x{2028}\\x{2029}\\x{85}\\f\\v]"));
    QStringList keywords;
    QSet<QString> known;
    const QStringList pieces = text.split(separators, Qt::SkipEmptyParts);
    for (const QString &piece : pieces) {
        const QString keyword = piece.trimmed();
        const QString folded = foldedCase(keyword);
        if (keyword.isEmpty() || known.contains(folded))
            continue;
        known.insert(folded);
        keywords.append(keyword);
    }
    return keywords;
}

QList<ImportedKeyword> keywordsFromFile(const QByteArray &content)
{
    const QString text = decoded(content);
    const bool hasTabs = text.section(u'\n', 0, 0).contains(u'\t');
    const QList<QStringList> rows = fromCsv(text, hasTabs ? u'\t' : u',');
    QList<ImportedKeyword> imported;
    const QStringList header = rows.value(0);
    const qsizetype keywordColumn = columnNamed(header, {QStringLiteral("Keyword")});
    if (keywordColumn >= 0) {
        const qsizetype countryColumn =
            columnNamed(header, {QStringLiteral("Storefront"), QStringLiteral("Country")});
        for (qsizetype i = 1; i < rows.size(); ++i) {
            const QString keyword = rows[i].value(keywordColumn).simplified();
            if (!keyword.isEmpty())
                imported.append({keyword, countryColumn < 0
                                              ? std::nullopt
                                              : storefrontIn(rows[i].value(countryColumn))});
        }
        return imported;
    }
    for (const QStringList &row : rows) {
        for (const QString &cell : row) {
            for (const QString &keyword : splitKeywords(cell))
                imported.append({keyword, std::nullopt});
        }
    }
    return imported;
}

} // namespace veltrix
