// SPDX-License-Identifier: GPL-3.0-or-later
// What went wrong with a part of a page, and the way on.
#pragma once

#include "ui_kit/widgets/card.h"

namespace veltrix
{

class Button;

class FailureCard final : public Card
{
    Q_OBJECT

public:
    FailureCard(const QString &objectName, const QString &action, QWidget *parent = nullptr);

    /// Hides the card when the message is empty.
    void setMessage(const QString &message);
    [[nodiscard]] QString message() const { return m_text->text(); }

Q_SIGNALS:
    void actionTriggered();

private:
    TextLabel *m_text;
};

} // namespace veltrix
