// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/release_notes.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

namespace veltrix
{

namespace
{

/// Letters of a feed that are looked at, and letters that are shown.
constexpr qsizetype mostRead = 16 * 1024;
constexpr qsizetype mostShown = 4000;

/// A document that fetches nothing, whatever its text asks for.
class SelfContainedDocument final : public QTextDocument
{
protected:
    QVariant loadResource(int, const QUrl &) override { return {}; }
};

/// The number of a numbered item, a bullet for any other.
QString markOf(const QTextList &list, const QTextBlock &item)
{
    const bool isNumbered = list.format().style() <= QTextListFormat::ListDecimal;
    return (isNumbered ? list.itemText(item) : QStringLiteral("•")) + u' ';
}

QString textOf(const QString &html)
{
    SelfContainedDocument document;
    document.setUndoRedoEnabled(false);
    document.setHtml(html);
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextList *list = block.textList();
        lines.append(list ? markOf(*list, block) + block.text() : block.text());
    }
    return lines.join(u'\n');
}

/// False for what would not be seen, or would change how the letters around it are read.
bool isShown(QChar c)
{
    if (c == u'\n' || c == u'\t')
        return true;
    const char16_t code = c.unicode();
    const bool turnsText = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return !turnsText && c.category() != QChar::Other_Control &&
           c != QChar::ObjectReplacementCharacter;
}

} // namespace

QString plainNotes(const QString &notes)
{
    const QString read = notes.left(mostRead);
    QString text = Qt::mightBeRichText(read) ? textOf(read) : read;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QChar::LineSeparator, u'\n');
    text.replace(QChar::ParagraphSeparator, u'\n');
    QStringList lines;
    for (const QString &line : text.split(u'\n')) {
        QString shown;
        std::copy_if(line.begin(), line.end(), std::back_inserter(shown), isShown);
        shown = shown.trimmed();
        // One empty line parts as well as many.
        if (!shown.isEmpty() || (!lines.isEmpty() && !lines.last().isEmpty()))
            lines.append(shown);
    }
    QString result = lines.join(u'\n').trimmed();
    if (result.size() > mostShown || notes.size() > mostRead)
        result = result.left(mostShown).trimmed() + QStringLiteral("…");
    return result;
}

} // namespace veltrix
