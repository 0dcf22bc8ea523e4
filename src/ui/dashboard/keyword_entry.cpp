// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_entry.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(KeywordTable)
};

} // namespace

QString timeText(const KeywordEntry &entry)
{
    if (entry.isRefreshing)
        return Texts::tr("Refreshing…");
    if (!entry.unmeasurable.isEmpty())
        return Texts::tr("Cannot be measured: %1").arg(entry.unmeasurable);
    if (entry.row.awaitingMetrics)
        return Texts::tr("Awaiting metrics");
    const KeywordSurroundings &table = *entry.surroundings;
    return Texts::tr("Updated %1")
        .arg(table.relativeTime.sinceUpdate(entry.row.lastUpdate, table.clock.now()));
}

QString updatedText(const KeywordEntry &entry)
{
    // The reason is what there is room for; a symbol before it and the ranking say the rest.
    if (!entry.unmeasurable.isEmpty() && !entry.isRefreshing)
        return entry.unmeasurable.first(1).toUpper() + entry.unmeasurable.sliced(1);
    return timeText(entry);
}

} // namespace veltrix
