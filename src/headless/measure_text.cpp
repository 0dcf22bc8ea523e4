// SPDX-License-Identifier: GPL-3.0-or-later
#include "headless/measure_text.h"

namespace veltrix
{

namespace
{

QString keywords(std::int64_t count)
{
    return count == 1 ? QStringLiteral("1 keyword")
                      : QString::number(count) + QStringLiteral(" keywords");
}

QString were(std::int64_t count)
{
    return QString::number(count) + (count == 1 ? QStringLiteral(" was") : QStringLiteral(" were"));
}

QString outcomeText(const MeasuredKeyword &turn)
{
    if (turn.problem)
        return QStringLiteral("not measured: ") + *turn.problem;
    const QString rank = turn.rank ? QStringLiteral("rank ") + QString::number(*turn.rank)
                                   : QStringLiteral("not ranked");
    return turn.movement ? rank + QStringLiteral(", ") + *turn.movement : rank;
}

} // namespace

QString printable(QString text)
{
    text.removeIf([](QChar c) {
        return c.category() == QChar::Other_Control || c.category() == QChar::Other_Format;
    });
    return text;
}

QString turnText(const MeasuredKeyword &turn)
{
    QStringList names{turn.keyword, turn.storefront, turn.app};
    names.removeAll(QString());
    return printable(names.join(QStringLiteral(" · ")) + QStringLiteral(": ") + outcomeText(turn));
}

QString summaryText(const MeasureSummary &summary)
{
    QStringList sentences;
    if (summary.measured > 0 || summary.notMeasured > 0) {
        QString measured = keywords(summary.measured) + QStringLiteral(" measured");
        if (summary.notMeasured > 0)
            measured += QStringLiteral(", ") + QString::number(summary.notMeasured) +
                        QStringLiteral(" not");
        sentences.append(measured + u'.');
    }
    if (summary.measuredBefore > 0)
        sentences.append(were(summary.measuredBefore) + QStringLiteral(" measured today already."));
    if (summary.left > 0)
        sentences.append(were(summary.left) + QStringLiteral(" left for the next time."));
    if (summary.problem)
        sentences.append(printable(*summary.problem));
    if (sentences.isEmpty())
        sentences.append(QStringLiteral("No keyword is tracked."));
    return sentences.join(u' ');
}

QString progressText(const MeasureProgress &progress)
{
    return printable(QStringLiteral("[") + QString::number(progress.number) + u'/' +
                     QString::number(progress.total) + QStringLiteral("] ") + progress.keyword);
}

} // namespace veltrix
