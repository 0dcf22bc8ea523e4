// SPDX-License-Identifier: GPL-3.0-or-later
// A ranking history as a table of text.
#pragma once

#include "ui/history/compared_history.h"

#include <QStringList>

namespace veltrix
{

/// The saved checks of the shown days, one row each, oldest first, with a header line; after what
/// is known of the own app come the notes of the day, and the ranks of all competitors. A day
/// without a check has a row only when there is a note on it; dates are ISO 8601 in UTC and numbers
/// plain, whatever the locale.
QList<QStringList> historyTable(const QString &keyword, const QString &country,
                                const ComparedChart &chart);

} // namespace veltrix
