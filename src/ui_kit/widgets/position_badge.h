// SPDX-License-Identifier: GPL-3.0-or-later
// The rank of an app in search results, and how it moved.
#pragma once

#include "model/rank_movement.h"
#include "ui_kit/theme/tokens.h"

#include <QFontMetricsF>
#include <QString>

#include <cstdint>
#include <optional>

class QPainter;

namespace veltrix
{

/// A rank as it is shown.
struct PositionBadge {
    /// 1-based; absent when the app was not among the returned results.
    std::optional<std::int64_t> position;

    /// "1st", "2nd", "3rd", "# 12" or "Not ranked".
    [[nodiscard]] QString text() const;
    /// The first three ranks carry a trophy.
    [[nodiscard]] bool hasTrophy() const { return position && *position >= 1 && *position <= 3; }
    [[nodiscard]] QString accessibleText() const;

    bool operator==(const PositionBadge &) const = default;
};

/// Green for a gain, red for a loss, Secondary for neither.
Token movementToken(const RankMovement &movement);
/// The movement as words, for who cannot see arrows: "up 3".
QString movementSentence(const RankMovement &movement);

struct PositionGeometry {
    /// Empty without a trophy.
    QRectF trophy;
    QPointF baseline;
    /// Where the movement label starts; its width is what there is room for.
    QPointF movementBaseline;
    qreal movementWidth = 0;
};

/// The badge at the leading end of `rect` and a movement label that is `movement` wide after it on
/// the same baseline, or below it where it does not fit beside it and there is room for two lines.
/// `rank` and `moved` are the metrics of their fonts.
PositionGeometry layoutPosition(const QRectF &rect, const QFontMetricsF &rank,
                                const PositionBadge &badge, const QFontMetricsF &moved,
                                qreal movement);
enum class PositionWeight { Strong, Regular };

/// `base` is the body font. A missing rank is never strong.
void paintPosition(QPainter &painter, const QRectF &rect, const PositionBadge &badge,
                   const std::optional<RankMovement> &movement, const Tokens &tokens,
                   const QFont &base, PositionWeight weight = PositionWeight::Strong);

} // namespace veltrix
