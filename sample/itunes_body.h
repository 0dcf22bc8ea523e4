// SPDX-License-Identifier: GPL-3.0-or-later
// The bodies of search and look-up, down to their line feeds.
#pragma once

#include "sample/app_record.h"

#include <QByteArray>

#include <vector>

namespace veltrix::sample
{

/// A body with the records in their order: three line feeds before and after the object, long
/// values on lines of their own. The empty body has 42 bytes.
QByteArray itunesBody(const std::vector<std::vector<RecordField>> &records);

/// The body of an answer to a request that makes no sense, with status 400.
QByteArray invalidValueBody(const QByteArray &key);

} // namespace veltrix::sample
