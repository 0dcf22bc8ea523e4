// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/feedback_button.h"

#include "ui_kit/accessibility/accessibility.h"

#include <QTimer>

namespace veltrix
{

namespace
{

constexpr std::chrono::milliseconds confirmationTime{2000};

}

FeedbackButton::FeedbackButton(const QString &objectName, Kind kind, const QString &symbol,
                               const QString &text, const QString &done, QWidget *parent)
    : Button(kind, symbol, text, parent), m_restingSymbol(symbol), m_restingText(text),
      m_done(done), m_timer(new QTimer(this))
{
    nameControl(this, objectName, text);
    m_timer->setSingleShot(true);
    m_timer->setInterval(confirmationTime);
    connect(m_timer, &QTimer::timeout, this, &FeedbackButton::restore);
}

void FeedbackButton::confirm()
{
    setText(m_done);
    setSymbol(QStringLiteral("checkmark"));
    setAccessibleName(m_done);
    announceNameChange(this);
    m_timer->start();
}

void FeedbackButton::restore()
{
    setText(m_restingText);
    setSymbol(m_restingSymbol);
    setAccessibleName(m_restingText);
}

QSize FeedbackButton::sizeHint() const
{
    // As wide as the longer text, so that nothing beside it moves.
    const QFontMetrics metrics(fontMetrics());
    const int growth =
        std::max(0, metrics.horizontalAdvance(m_restingText) - metrics.horizontalAdvance(text()));
    return Button::sizeHint() + QSize(growth, 0);
}

} // namespace veltrix
