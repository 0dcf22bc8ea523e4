// SPDX-License-Identifier: GPL-3.0-or-later
// What the cells of several tables have in common.
#pragma once

#include "model/url.h"
#include "ui_kit/table/cell_painting.h"

#include <optional>

namespace veltrix
{

/// A text and behind it a short code, such as a keyword and its storefront. The text gives way
/// where there is no room.
void paintTextWithCode(const CellPainting &cell, const QString &text, const QString &code);

/// A small icon, or the place of one, and a text.
void paintIconWithText(const CellPainting &cell, const std::optional<Url> &icon,
                       const QString &text, Token token);

} // namespace veltrix
