// SPDX-License-Identifier: GPL-3.0-or-later
// How the lines of a compared history are told apart: by colour and by mark.
#pragma once

#include "ui_kit/theme/tokens.h"

#include <QPainterPath>

class QPainter;

namespace veltrix
{

enum class MarkShape { Circle, Square, Triangle, Diamond, TriangleDown, Star, Hexagon };

struct LineLook {
    Token token = Token::Accent;
    MarkShape shape = MarkShape::Circle;
    /// Marks are hollow, but for lines whose colour and shape another one has already.
    bool isFilled = false;

    bool operator==(const LineLook &) const = default;
};

/// The look of the user's own app.
inline LineLook ownLook()
{
    return {};
}

/// Looks of other apps before they repeat.
inline constexpr size_t rivalLookCount = 12;

/// The look of the other app at that place, from 0 on.
LineLook rivalLook(size_t place);

/// The outline of a mark around `centre`; shapes of one `side` look equally large.
QPainterPath markOutline(MarkShape shape, QPointF centre, qreal side);

/// `fill` is what shows inside a hollow mark.
void paintMark(QPainter &painter, const LineLook &look, QPointF centre, qreal side,
               const QColor &line, const QColor &fill, qreal strokeWidth);

/// "circles": for those who are told of a mark instead of seeing it.
QString shapeName(const LineLook &look);
/// "orange"
QString colorName(const LineLook &look);

} // namespace veltrix
