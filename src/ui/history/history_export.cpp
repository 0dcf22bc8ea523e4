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

} // namespace

QList<QStringList> historyTable(const QString &keyword, const QString &country,
                                const RankChartData &data)
{
    using Texts = HistoryTexts;
    QList<QStringList> table{{Texts::tr("Keyword"), Texts::tr("Storefront"), Texts::tr("Day (UTC)"),
                              Texts::tr("Checked at"), Texts::tr("Rank"), Texts::tr("Movement")}};
    for (const RankingTimeline::Day &day : data.days) {
        if (!day.observation)
            continue;
        const auto &position = day.observation->position;
        table.append({keyword, country, formatInternetDateTime(day.date).left(10),
                      formatInternetDateTime(day.observation->date),
                      position ? QString::number(*position) : Texts::tr("Not ranked"),
                      day.movement ? day.movement->label() : QString()});
    }
    return table;
}

} // namespace veltrix
