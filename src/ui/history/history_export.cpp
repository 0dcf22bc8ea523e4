// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_export.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct HistoryTexts {
    Q_DECLARE_TR_FUNCTIONS(RankHistory)
};

/// "12", "Not ranked", or nothing without a check.
QString rankCell(const std::optional<RankingTimeline::Observation> &check)
{
    if (!check)
        return {};
    return check->position ? QString::number(*check->position) : HistoryTexts::tr("Not ranked");
}

QString notesCell(const ComparedChart &chart, size_t day)
{
    QStringList notes;
    for (const DayMark &mark : chart.marksOf(day)) {
        if (mark.isNote())
            notes << mark.text;
    }
    return notes.join(QStringLiteral("; "));
}

} // namespace

QList<QStringList> historyTable(const QString &keyword, const QString &country,
                                const ComparedChart &chart)
{
    using Texts = HistoryTexts;
    QStringList header{Texts::tr("Keyword"),    Texts::tr("Storefront"), Texts::tr("Day (UTC)"),
                       Texts::tr("Checked at"), Texts::tr("Rank"),       Texts::tr("Movement"),
                       Texts::tr("Notes")};
    for (const ComparedLine &rival : chart.rivals)
        header << Texts::tr("Rank of %1").arg(rival.name);
    QList<QStringList> table{header};
    for (size_t i = 0; i < chart.days().size(); ++i) {
        const RankingTimeline::Day &day = chart.days()[i];
        const QString notes = notesCell(chart, i);
        if (!day.observation && notes.isEmpty())
            continue;
        QStringList row{keyword,
                        country,
                        formatInternetDateTime(day.date).left(10),
                        day.observation ? formatInternetDateTime(day.observation->date) : QString(),
                        rankCell(day.observation),
                        day.movement ? day.movement->label() : QString(),
                        notes};
        for (const ComparedLine &rival : chart.rivals)
            row << rankCell(rival.data.days[i].observation);
        table.append(row);
    }
    return table;
}

} // namespace veltrix
