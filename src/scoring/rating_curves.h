// SPDX-License-Identifier: GPL-3.0-or-later
// What ratings, stars and age are worth: the curves by which both the field of competitors and the
// user's own app are judged.
#pragma once

#include "scoring/curve.h"

namespace veltrix
{

/// Points (0 to 100) by number of ratings; logarithmic.
extern const Curve ratingCountCurve;
/// Points (0 to 100) by ratings per year; logarithmic.
extern const Curve ratingMomentumCurve;
/// Points (0 to 100) by mean stars (0 to 5); linear.
extern const Curve starCurve;
/// Points (0 to 100) by age in years; linear.
extern const Curve ageCurve;

} // namespace veltrix
