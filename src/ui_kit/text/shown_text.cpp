// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/shown_text.h"

#include <algorithm>
#include <iterator>

namespace veltrix
{

namespace
{

constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popDirectionalIsolate(0x2069);

bool isLineEnd(QChar c)
{
    const char16_t code = c.unicode();
    return (code >= u'\n' && code <= u'\r') || code == 0x85 || code == QChar::LineSeparator ||
           code == QChar::ParagraphSeparator;
}

/// False for what would not be seen, or would change how the letters around it are read.
bool isShown(QChar c)
{
    const char16_t code = c.unicode();
    const bool turnsText = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return c == u'\t' || (!turnsText && c.category() != QChar::Other_Control);
}

bool isRightToLeft(char32_t c)
{
    const QChar::Direction direction = QChar::direction(c);
    return direction == QChar::DirR || direction == QChar::DirAL;
}

} // namespace

QString shownText(const QString &text)
{
    QString shown;
    shown.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            continue;
        if (isLineEnd(text[i]))
            shown += u'\n';
        else if (isShown(text[i]))
            shown += text[i];
    }
    return shown;
}

QString shownLine(const QString &text)
{
    QString line = shownText(text);
    line.replace(u'\n', u' ').replace(u'\t', u' ');
    return line.trimmed();
}

QString inSentence(const QString &name)
{
    const QString line = shownLine(name);
    const auto letters = line.toUcs4();
    if (std::none_of(letters.begin(), letters.end(), isRightToLeft))
        return line;
    return firstStrongIsolate + line + popDirectionalIsolate;
}

} // namespace veltrix
