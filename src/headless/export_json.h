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
/// null, and its date as formatInternetDateTime() writes it.
QByteArray measurementObject(const AppProfile &app, const KeywordSnapshot &snapshot);

} // namespace veltrix
