// SPDX-License-Identifier: GPL-3.0-or-later
// Invented names for apps and publishers.
#pragma once

#include <QString>

namespace veltrix::sample
{

/// The number of different brand names.
int brandNameCount();

/// The brand name of a number from 0; numbers beyond brandNameCount() start again.
/// Every name is a made-up compound of two English words, such as "Pebblewick".
const QString &brandName(int number);

/// A publisher of apps for the world, such as "Larchwold Software GmbH"; `number` counts from 0.
QString publisherName(int number);

} // namespace veltrix::sample
