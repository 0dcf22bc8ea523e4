// SPDX-License-Identifier: GPL-3.0-or-later
// The storefronts that pickers offer, and their names.
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

namespace veltrix
{

/// Two-letter codes of the storefronts in pickers, in their fixed order (47).
const QStringList &storefrontCodes();

/// The region's name in the language of `locale`, or the code itself when the locale has none.
QString storefrontName(const QString &code, const QLocale &locale = QLocale());

} // namespace veltrix
