// SPDX-License-Identifier: GPL-3.0-or-later
// What an app is in one storefront on one day: sold or not, rated how often and how well.
#pragma once

#include "sample/sample_app.h"

#include <QDate>

namespace veltrix::sample
{

/// The day on which apps have their catalogue rating counts; later days have more.
inline QDate referenceDay()
{
    return QDate(2026, 1, 1);
}

/// Local apps are sold where their language is spoken and in some other countries, apps for the
/// world nearly everywhere. Before its release an app is sold nowhere.
bool isSold(const SampleApp &app, const Storefront &storefront, QDate day);

/// Ratings in the storefront. Counts grow by some 6 % of those of the reference day a year.
std::int64_t ratingCount(const SampleApp &app, const Storefront &storefront, QDate day);

/// Mean stars in the storefront with five decimals, or 0 for an app without ratings there.
double averageStars(const SampleApp &app, const Storefront &storefront, QDate day);

/// When the version that is sold on `day` appeared.
QDateTime currentVersionReleased(const SampleApp &app, QDate day);

/// The version that is sold on `day`, such as "3.14.2".
QString versionText(const SampleApp &app, QDate day);

} // namespace veltrix::sample
