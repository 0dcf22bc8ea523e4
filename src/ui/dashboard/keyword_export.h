// SPDX-License-Identifier: GPL-3.0-or-later
// The history of keywords as a table of text.
#pragma once

#include "store/aso_store.h"

#include <QStringList>

namespace veltrix
{

/// Every snapshot of every keyword of an app, one line each, by keyword and then by time, with a
/// header line.
QList<QStringList> keywordHistory(const ASOStore &store, QUuid appId);

} // namespace veltrix
