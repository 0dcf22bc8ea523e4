// SPDX-License-Identifier: GPL-3.0-or-later
// The white drawings on icons.
#pragma once

#include "sample/theme.h"

class QPainter;

namespace veltrix::sample
{

/// Draws a glyph in the middle of a square of 100 × 100. `turn` (degrees) turns the ones that look
/// right at any angle, so that icons of one theme differ.
void paintGlyph(QPainter &painter, Glyph glyph, int turn);

} // namespace veltrix::sample
