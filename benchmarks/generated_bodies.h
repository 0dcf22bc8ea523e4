// SPDX-License-Identifier: GPL-3.0-or-later
// Search bodies of the size and shape that the App Store sends, for benchmarks.
#pragma once

#include <QByteArray>

namespace veltrix
{

/// A search answer with `results` apps: about 10 kB each, with the keys that Veltrix reads among
/// those it skips (device lists, genres, languages), in an order that differs from record to
/// record.
QByteArray generatedSearchBody(int results);

} // namespace veltrix
