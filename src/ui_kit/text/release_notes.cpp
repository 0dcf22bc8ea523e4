// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/release_notes.h"

#include "ui_kit/text/shown_text.h"

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

} // namespace

QString plainNotes(const QString &notes)
{
    const QString read = notes.left(mostRead);
    QString text = shownText(Qt::mightBeRichText(read) ? textOf(read) : read);
    // What stands for a picture.
    text.remove(QChar::ObjectReplacementCharacter);
    QStringList lines;
    for (const QString &line : text.split(u'\n')) {
        const QString shown = line.trimmed();
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
