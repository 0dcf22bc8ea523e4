// SPDX-License-Identifier: GPL-3.0-or-later
// The names of storefronts.
#pragma once

#include "model/storefront_codes.h"
#include "ui_kit/text/figures.h"

#include <QLocale>
#include <QString>

#include <optional>

namespace veltrix
{

/// The region's name in the language of `locale`, or the code itself when the locale has none.
QString storefrontName(const QString &code, const QLocale &locale = wordLocale());

/// The storefront that a text names: by its code or by its region's name in English or in the
/// language of `locale`, in any case. Nothing for any other text.
std::optional<QString> storefrontNamed(const QString &text, const QLocale &locale = wordLocale());

} // namespace veltrix
