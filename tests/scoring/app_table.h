// SPDX-License-Identifier: GPL-3.0-or-later
// Search results written as a table.
#pragma once

#include "model/date.h"
#include "model/itunes_app_result.h"

#include <QList>

namespace veltrix
{

/// The moment that counts as now in the model tests: 2026-11-21T12:00:00Z.
Date testNow();

/// Search results from a table: a line of column names, then a line an app, cells between "|".
///
/// Columns: id, name, subtitle, genre, seller, ratings, stars, released, icon, and times, which
/// repeats the line. A cell "-" and a column that is not there leave the field absent; an empty
/// cell is an empty text.
QList<ITunesAppResult> appTable(const QString &table);

} // namespace veltrix
