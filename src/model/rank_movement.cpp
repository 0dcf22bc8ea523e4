// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/rank_movement.h"

#include <limits>

namespace veltrix
{

namespace
{

/// Places from the smaller to the larger position. Positions of a damaged file may lie further
/// apart than a number can say.
std::int64_t distance(std::int64_t smaller, std::int64_t larger)
{
    const std::uint64_t places = std::uint64_t(larger) - std::uint64_t(smaller);
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    return places > std::uint64_t(most) ? most : std::int64_t(places);
}

} // namespace

RankMovement RankMovement::between(std::optional<std::int64_t> previous,
                                   std::optional<std::int64_t> current)
{
    if (!previous)
        return current ? entered() : stillUnranked();
    if (!current)
        return left();
    if (*current < *previous)
        return improved(distance(*current, *previous));
    if (*current > *previous)
        return declined(distance(*previous, *current));
    return unchanged();
}

QString RankMovement::label() const
{
    switch (m_kind) {
    case Kind::Improved:
        return QStringLiteral("↑ %1").arg(m_places);
    case Kind::Declined:
        return QStringLiteral("↓ %1").arg(m_places);
    case Kind::First:
        return QStringLiteral("First observation");
    case Kind::Unchanged:
        return QStringLiteral("No change");
    case Kind::Entered:
        return QStringLiteral("Entered results");
    case Kind::Left:
        return QStringLiteral("Left results");
    case Kind::StillUnranked:
        return QStringLiteral("Still not ranked");
    }
    Q_UNREACHABLE();
}

} // namespace veltrix
