// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/curve.h"

#include <algorithm>
#include <cmath>

namespace veltrix
{

double Curve::at(double x) const
{
    const CurvePoint &first = points.front();
    if (x <= 0)
        return first.x == 0 ? first.y : 0;
    if (x < first.x)
        return first.y * x / first.x;
    const auto above = std::find_if(points.begin() + 1, points.end(),
                                    [x](const CurvePoint &point) { return x < point.x; });
    if (above == points.end())
        return points.back().y;
    const CurvePoint &a = *(above - 1);
    const CurvePoint &b = *above;
    if (mode == CurveMode::Linear)
        return a.y + (b.y - a.y) * (x - a.x) / (b.x - a.x);
    return a.y + (b.y - a.y) * std::log(x / a.x) / std::log(b.x / a.x);
}

} // namespace veltrix
