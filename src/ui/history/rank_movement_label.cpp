// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_movement_label.h"

#include "ui_kit/widgets/position_badge.h"

namespace veltrix
{

RankMovementLabel::RankMovementLabel(QWidget *parent)
    : TokenLabel(TextStyle::SecondaryMedium, Token::Secondary, QString(), parent)
{
    setObjectName(QStringLiteral("rankMovement"));
}

void RankMovementLabel::setMovement(const std::optional<RankMovement> &movement)
{
    setVisible(movement.has_value());
    if (!movement)
        return;
    setText(movement->label());
    setAccessibleName(movementSentence(*movement));
    setToken(movementToken(*movement));
}

} // namespace veltrix
