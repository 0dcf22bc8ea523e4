// SPDX-License-Identifier: GPL-3.0-or-later
// Keywords and their history as tables of text, for files.
#pragma once

#include "store/aso_store.h"

#include <QStringList>

namespace veltrix
{

/// One line a keyword with what its newest measurement says, in the order of `ids`, with a header
/// line: keyword, storefront, app, date and time in UTC as spreadsheets read them, rank, change of
/// the rank (positive: up), popularity, difficulty, competition, opportunity, target, changes in 7
/// and 30 days, best rank and its day, tags parted by "; ". What is missing is an empty cell.
QList<QStringList> keywordTable(const ASOStore &store, const QList<QUuid> &ids);
/// The same for all keywords, app by app, each by keyword.
QList<QStringList> keywordTableOfAllApps(const ASOStore &store);

/// The keywords of an app in the order of an export.
QList<TrackedKeyword> sortedKeywords(const ASOStore &store, QUuid appId);
/// The header line of keywordHistory().
QList<QStringList> keywordHistoryHeader();
/// Measurements of a keyword, one line each. May be called on any thread.
QList<QStringList> keywordHistory(const TrackedKeyword &keyword,
                                  const std::vector<SharedSnapshot> &measurements);

} // namespace veltrix
