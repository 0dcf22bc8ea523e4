// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/text/tool_tip_text.h"

#include <QStringList>

namespace veltrix
{

namespace
{

constexpr qsizetype longestLine = 80;
constexpr qsizetype longestText = 1000;

} // namespace

QString toolTipText(const QString &text)
{
    QStringList lines;
    const QString whole = text.size() <= longestText ? text : text.first(longestText) + u'…';
    for (QString line : whole.split(u'\n')) {
        while (line.size() > longestLine) {
            const qsizetype space = line.lastIndexOf(u' ', longestLine);
            const qsizetype end = space > 0 ? space : longestLine;
            lines << line.first(end);
            line = line.sliced(space > 0 ? end + 1 : end);
        }
        lines << line;
    }
    return lines.join(u'\n');
}

} // namespace veltrix
