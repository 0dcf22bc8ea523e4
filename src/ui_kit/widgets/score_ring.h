// SPDX-License-Identifier: GPL-3.0-or-later
// A score from 0 to 100 as a ring and a number.
#pragma once

#include "ui_kit/theme/tokens.h"

#include <QFontMetricsF>
#include <QString>

#include <cstdint>
#include <optional>

class QPainter;

namespace veltrix
{

struct ScoreRing {
    enum class Mode {
        /// Higher is better.
        Popularity,
        /// Lower is better.
        Difficulty,
    };

    /// 0 to 100; absent when it could not be measured.
    std::optional<std::int64_t> value;
    Mode mode = Mode::Popularity;

    /// Green, Yellow or Red; Secondary without a value.
    [[nodiscard]] Token token() const;
    /// The number, or "—".
    [[nodiscard]] QString text() const;
    /// Share of the circle that the arc covers, 0 to 1; 0 without a value or below 1.
    [[nodiscard]] double fraction() const;
    /// "Popularity: 61" or "Estimated difficulty: unavailable".
    [[nodiscard]] QString accessibleText() const;
    [[nodiscard]] QString accessibleHint() const;

    bool operator==(const ScoreRing &) const = default;
};

struct ScoreRingGeometry {
    /// The middle line of the stroke.
    QRectF ring;
    qreal stroke = 0;
    /// Start of the number's baseline.
    QPointF baseline;
    /// Everything.
    QRectF bounds;
};

/// Ring and number at the leading end of `rect`, centred vertically. `number` are the metrics of
/// the number's font; the ring is 20 pixels across at the standard font.
ScoreRingGeometry layoutScoreRing(const QRectF &rect, const QFontMetricsF &number,
                                  const ScoreRing &value);
/// `base` is the body font.
void paintScoreRing(QPainter &painter, const QRectF &rect, const ScoreRing &value,
                    const Tokens &tokens, const QFont &base);

} // namespace veltrix
