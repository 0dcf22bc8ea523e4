// SPDX-License-Identifier: GPL-3.0-or-later
// Keywords and their history as tables of text.
#pragma once

#include "store/aso_store.h"
#include "ui/dashboard/keyword_column.h"

#include <QList>
#include <QStringList>

#include <vector>

namespace veltrix
{

class KeywordTableModel;

/// The rows of the table with a header line: the given columns in their order, the storefront's
/// code after the keyword. Missing figures are empty cells.
QList<QStringList> keywordTable(const KeywordTableModel &model, const std::vector<int> &rows,
                                const std::vector<KeywordColumn> &columns);

/// Every snapshot of every keyword of an app, one line each, by keyword and then by time, with a
/// header line.
QList<QStringList> keywordHistory(const ASOStore &store, QUuid appId);

} // namespace veltrix
