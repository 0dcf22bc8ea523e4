// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/table_file.h"

#include "ui_kit/text/icu_text.h"

#include <QCoreApplication>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <utility>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(TableFile)
};

bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control && !c.isSpace();
}

std::optional<QString> decodedAs(QStringConverter::Encoding encoding, const QByteArray &content)
{
    const bool isInPairs =
        encoding == QStringConverter::Utf16LE || encoding == QStringConverter::Utf16BE;
    if (isInPairs && content.size() % 2 != 0)
        return std::nullopt;
    // Stateless, so that a character that is cut off at the end is an error too.
    QStringDecoder decoder(encoding, QStringConverter::Flag::Stateless);
    const QString text = decoder.decode(content);
    // Half of a character is none of the decoder's errors, but no text either.
    const bool isText = !decoder.hasError() && !text.contains(QChar()) && text.isValidUtf16();
    return isText ? std::optional(text) : std::nullopt;
}

/// In UTF-16 most languages' separators, digits and line ends have a byte that is zero, always on
/// the same side.
std::optional<QStringConverter::Encoding> unmarkedUtf16(const QByteArray &content)
{
    std::array<qsizetype, 2> zeros{};
    for (qsizetype i = 0; i < content.size(); ++i) {
        if (content[i] == '\0')
            ++zeros[size_t(i % 2)];
    }
    if (zeros[0] == zeros[1])
        return std::nullopt;
    return zeros[1] > zeros[0] ? QStringConverter::Utf16LE : QStringConverter::Utf16BE;
}

std::optional<QString> decodedAsWindows1252(const QByteArray &content)
{
    if (content.size() > std::numeric_limits<int32_t>::max())
        return std::nullopt;
    return fromIcu(
        icu::UnicodeString(content.constData(), int32_t(content.size()), "windows-1252"));
}

/// The text in the encoding that it is most probably in, where nothing says which.
std::optional<QString> guessed(const QByteArray &content)
{
    const auto unmarked = unmarkedUtf16(content);
    const auto text = unmarked ? decodedAs(*unmarked, content) : decodedAsWindows1252(content);
    // Any bytes are characters of some kind; those of a picture are control characters, too.
    return text && std::none_of(text->begin(), text->end(), isControl) ? text : std::nullopt;
}

/// Takes a text apart, character by character.
class TableReader
{
public:
    TableReader(QStringView text, QChar separator) : m_text(text), m_separator(separator) {}

    QList<TextRow> read(qsizetype from)
    {
        m_place = from;
        m_line = m_row.line = from > 0 ? 2 : 1;
        for (; m_place < m_text.size(); ++m_place) {
            const QChar c = m_text[m_place];
            if (c == u'"' && m_cell.trimmed().isEmpty()) {
                readQuoted();
            } else if (c == m_separator) {
                m_row.cells.append(std::exchange(m_cell, {}));
            } else if (isLineEnd(c)) {
                endRow();
                passLineEnd();
                m_row.line = m_line;
            } else {
                m_cell += c;
            }
        }
        endRow();
        return std::move(m_rows);
    }

private:
    void readQuoted()
    {
        const qsizetype opened = m_line;
        m_cell.clear();
        while (++m_place < m_text.size()) {
            const QChar c = m_text[m_place];
            const bool isDoubled = m_text.mid(m_place + 1, 1) == QLatin1String("\"");
            if (c == u'"' && !isDoubled)
                return;
            if (c == u'"')
                ++m_place;
            m_cell += c;
            if (isLineEnd(c) && !isFirstOfPair())
                ++m_line;
        }
        throw TableFileError(
            Texts::tr("The quotation mark in line %L1 is not closed.").arg(opened));
    }

    /// At a CR that a LF follows, which are one line end.
    [[nodiscard]] bool isFirstOfPair() const
    {
        return m_text[m_place] == u'\r' && m_text.mid(m_place + 1, 1) == QLatin1String("\n");
    }

    void passLineEnd()
    {
        if (isFirstOfPair())
            ++m_place;
        ++m_line;
    }

    void endRow()
    {
        if (!m_row.cells.isEmpty() || !m_cell.trimmed().isEmpty()) {
            m_row.cells.append(m_cell);
            m_rows.append(m_row);
        }
        m_row.cells.clear();
        m_cell.clear();
    }

    QStringView m_text;
    const QChar m_separator;
    qsizetype m_place = 0;
    qsizetype m_line = 1;
    QString m_cell;
    TextRow m_row;
    QList<TextRow> m_rows;
};

/// What parts the cells of the first line that is parted at all, outside quotation marks.
QChar separatorOf(QStringView text)
{
    constexpr std::array separators{u'\t', u',', u';'};
    std::array<qsizetype, separators.size()> counts{};
    const auto most = [&counts] {
        return std::max_element(counts.begin(), counts.end());
    };
    bool isQuoted = false;
    bool isCellBegun = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (isQuoted) {
            if (c == u'"' && text.mid(i + 1, 1) == QLatin1String("\""))
                ++i;
            else if (c == u'"')
                isQuoted = false;
            continue;
        }
        if (isLineEnd(c) && *most() > 0)
            break;
        const auto *const found = std::find(separators.begin(), separators.end(), c);
        if (found != separators.end())
            ++counts[size_t(found - separators.begin())];
        isQuoted = c == u'"' && !isCellBegun;
        isCellBegun = found == separators.end() && !isLineEnd(c) && (isCellBegun || !c.isSpace());
    }
    return *most() > 0 ? QChar(separators[size_t(most() - counts.begin())]) : QChar(u',');
}

} // namespace

QString textOfFile(const QByteArray &content)
{
    std::optional<QString> text;
    if (const auto marked = QStringConverter::encodingForData(content)) {
        text = decodedAs(*marked, content);
    } else {
        text = decodedAs(QStringConverter::Utf8, content);
        if (!text)
            text = guessed(content);
    }
    if (!text)
        throw TableFileError(Texts::tr("The file is not a text file."));
    return *text;
}

bool isLineEnd(QChar c)
{
    return c == u'\n' || c == u'\r' || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator || c == u'\x85' || c == u'\f' || c == u'\v';
}

QList<TextRow> rowsOfText(const QString &text)
{
    const QLatin1String saying("sep=");
    const bool isSaid = text.startsWith(saying, Qt::CaseInsensitive) &&
                        text.size() > saying.size() + 1 && isLineEnd(text[saying.size() + 1]);
    if (!isSaid)
        return TableReader(text, separatorOf(text)).read(0);
    const qsizetype end = saying.size() + 1;
    const bool isPair = text[end] == u'\r' && text.mid(end + 1, 1) == QLatin1String("\n");
    return TableReader(text, text[saying.size()]).read(end + (isPair ? 2 : 1));
}

} // namespace veltrix
