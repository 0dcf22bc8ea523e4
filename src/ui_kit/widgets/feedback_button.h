// SPDX-License-Identifier: GPL-3.0-or-later
// A button that says for a moment that it was done.
#pragma once

#include "ui_kit/widgets/button.h"

class QTimer;

namespace veltrix
{

/// For actions without a visible result, such as copying.
class FeedbackButton final : public Button
{
    Q_OBJECT

public:
    /// `done` replaces text and symbol for two seconds after confirm().
    FeedbackButton(const QString &objectName, Kind kind, const QString &symbol, const QString &text,
                   const QString &done, QWidget *parent = nullptr);

    /// Says that it was done.
    void confirm();

    [[nodiscard]] QSize sizeHint() const override;

private:
    void restore();

    QString m_restingSymbol;
    QString m_restingText;
    QString m_done;
    QTimer *m_timer;
};

} // namespace veltrix
