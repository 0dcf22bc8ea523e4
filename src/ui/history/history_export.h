// SPDX-License-Identifier: GPL-3.0-or-later
// A ranking history as a table of text.
#pragma once

#include "ui/history/rank_history.h"

#include <QStringList>

namespace veltrix
{

/// The saved checks of the shown days, one row each, oldest first, with a header line. Days without
/// a check have no row; dates are ISO 8601 in UTC and numbers plain, whatever the locale.
QList<QStringList> historyTable(const QString &keyword, const QString &country,
                                const RankChartData &data);

} // namespace veltrix
