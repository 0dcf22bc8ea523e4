// SPDX-License-Identifier: GPL-3.0-or-later
// How a rank moved, in words and colour.
#pragma once

#include "model/rank_movement.h"
#include "ui_kit/widgets/card.h"

namespace veltrix
{

/// A movement's label: green for a gain, red for a loss, quiet for neither.
class RankMovementLabel final : public TokenLabel
{
    Q_OBJECT

public:
    explicit RankMovementLabel(QWidget *parent = nullptr);

    /// Hides the label without a movement.
    void setMovement(const std::optional<RankMovement> &movement);
};

} // namespace veltrix
