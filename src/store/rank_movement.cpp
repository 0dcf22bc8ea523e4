// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/rank_movement.h"

namespace veltrix
{

RankMovement RankMovement::between(std::optional<std::int64_t> previous,
                                   std::optional<std::int64_t> current)
{
    if (!previous)
        return current ? entered() : stillUnranked();
    if (!current)
        return left();
    if (*current < *previous)
        return improved(*previous - *current);
    if (*current > *previous)
        return declined(*current - *previous);
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
