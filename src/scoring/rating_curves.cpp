// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/rating_curves.h"

namespace veltrix
{

namespace
{

/// Number of ratings → points.
constexpr CurvePoint ratingCountPoints[] = {{50, 5},      {200, 15},     {500, 30},
                                            {2000, 50},   {5000, 65},    {10'000, 78},
                                            {25'000, 88}, {100'000, 95}, {1'000'000, 100}};

/// Ratings per year → points.
constexpr CurvePoint ratingMomentumPoints[] = {{10, 5},      {50, 15},      {200, 30},
                                               {1000, 50},   {5000, 70},    {20'000, 85},
                                               {50'000, 95}, {500'000, 100}};

/// Mean stars → points.
constexpr CurvePoint starPoints[] = {{0, 0},    {3, 20},   {3.5, 35}, {4, 50},
                                     {4.3, 70}, {4.5, 85}, {5, 100}};

/// Age in years → points.
constexpr CurvePoint agePoints[] = {{0, 0},  {0.5, 10}, {1, 20}, {2, 35},
                                    {3, 50}, {5, 70},   {8, 85}, {10, 100}};

} // namespace

constinit const Curve ratingCountCurve{CurveMode::Logarithmic, ratingCountPoints};
constinit const Curve ratingMomentumCurve{CurveMode::Logarithmic, ratingMomentumPoints};
constinit const Curve starCurve{CurveMode::Linear, starPoints};
constinit const Curve ageCurve{CurveMode::Linear, agePoints};

} // namespace veltrix
