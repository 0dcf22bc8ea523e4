// SPDX-License-Identifier: GPL-3.0-or-later
// The storefronts in which keywords are tracked.
#pragma once

#include <QString>
#include <QStringList>

namespace veltrix
{

/// Upper-case two-letter codes of the storefronts that can be chosen, in their fixed order (47).
const QStringList &storefrontCodes();

/// Whether `code`, in any case, is one of storefrontCodes().
[[nodiscard]] bool isStorefrontCode(const QString &code);

} // namespace veltrix
