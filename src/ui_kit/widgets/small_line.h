// SPDX-License-Identifier: GPL-3.0-or-later
// The ranks of the last days as a line without an axis, as high as a row.
#pragma once

#include "ui_kit/theme/tokens.h"

#include <QPolygonF>
#include <QRectF>

#include <optional>
#include <vector>

class QPainter;

namespace veltrix
{

/// Checks from the first day to the last, best on top.
struct SmallLine {
    struct Check {
        /// From 0 to `days` - 1, ascending.
        int day = 0;
        /// A rank or an average of ranks; absent when the check found nothing.
        std::optional<double> rank;

        bool operator==(const Check &) const = default;
    };
    std::vector<Check> checks;
    /// Days that the whole width stands for.
    int days = 31;
    /// Ranks that the height spans at least: a step of one place looks small.
    double leastSpan = 12;

    /// The first and the last rank; none without a rank.
    [[nodiscard]] std::optional<std::pair<double, double>> ends() const;
    bool operator==(const SmallLine &) const = default;
};

struct SmallLineGeometry {
    /// Parted by checks that found nothing; a day without a check parts nothing. Of one point where
    /// the checks beside it found nothing.
    std::vector<QPolygonF> parts;
    /// Of the last check, when it has a rank.
    std::optional<QPointF> dot;
    /// Of the last check, when it found nothing.
    std::optional<QPointF> cross;
};

SmallLineGeometry layoutSmallLine(const QRectF &rect, const SmallLine &line);
/// `token` is the line's colour.
void paintSmallLine(QPainter &painter, const QRectF &rect, const SmallLine &line, Token token,
                    const Tokens &tokens);

} // namespace veltrix
