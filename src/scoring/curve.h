// SPDX-License-Identifier: GPL-3.0-or-later
// Piecewise curves: the one rule by which every table of points is read.
#pragma once

#include <span>

namespace veltrix
{

/// One point of a table: the value `y` at `x`.
struct CurvePoint {
    double x = 0;
    double y = 0;
};

/// How a curve is read between two points: by x, or by its logarithm.
enum class CurveMode { Linear, Logarithmic };

/// A list of points in ascending x, never empty, and how to read between them.
///
/// Below the first point the curve is a straight line from the origin, beyond the last it is flat.
/// At or below x = 0 it is 0, unless the first point lies at x = 0 itself.
struct Curve {
    CurveMode mode = CurveMode::Linear;
    std::span<const CurvePoint> points;

    /// The value at `x`. Finite for every x: not-a-number counts as beyond the last point.
    [[nodiscard]] double at(double x) const;
};

} // namespace veltrix
