// SPDX-License-Identifier: GPL-3.0-or-later
// Exported keywords and measurements as JSON objects.
#pragma once

#include "store/aso_store.h"

#include <QByteArray>

namespace veltrix
{

/// A keyword of that app with its newest measurement: raw values, null where there is none.
QByteArray keywordObject(const ASOStore &store, const AppProfile &app,
                         const TrackedKeyword &keyword);

/// A measurement of one of the app's keywords as the state file has it, but that what is missing is
/// null, and its date as formatInternetDateTime() writes it. After that the texts of the app's
/// notes of the day, and the competitors that `standings` of the keyword have on it.
QByteArray measurementObject(const ASOStore &store, const AppProfile &app,
                             const KeywordSnapshot &snapshot,
                             const std::vector<KeywordStandings> &standings);

} // namespace veltrix
