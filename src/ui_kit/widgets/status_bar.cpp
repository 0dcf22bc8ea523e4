// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/status_bar.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/text_label.h"

#include <QHBoxLayout>

#include <algorithm>

namespace veltrix
{

ProgressLine::ProgressLine(QWidget *parent) : QWidget(parent)
{
    setAccessibleRole(this, QAccessible::ProgressBar);
    nameControl(this, QStringLiteral("progress"), tr("Progress"));
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

void ProgressLine::setFraction(std::optional<double> fraction)
{
    m_fraction = fraction;
    setAccessibleDescription(fraction ? tr("%1 %").arg(qRound(*fraction * 100)) : QString());
    update();
}

void ProgressLine::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    const QRectF track = rect();
    drawRoundedRect(painter, track, track.height() / 2, tokens[Token::Hairline]);
    if (!m_fraction || *m_fraction <= 0)
        return;
    QRectF bar = track;
    bar.setWidth(std::max(track.height(), track.width() * std::min(1.0, *m_fraction)));
    if (isRightToLeft())
        bar.moveRight(track.right());
    drawRoundedRect(painter, bar, track.height() / 2, tokens[Token::Accent]);
}

StatusBar::StatusBar(QWidget *parent)
    : QWidget(parent), m_message(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_detail(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_offer(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_undo(new Button(Button::Kind::Link, tr("Undo"))),
      m_workText(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_progress(new ProgressLine), m_stop(new Button(Button::Kind::Link, tr("Stop")))
{
    setAccessibleRole(this, QAccessible::StatusBar);
    nameControl(this, QStringLiteral("statusBar"), tr("Status"));
    m_message->setObjectName(QStringLiteral("statusMessage"));
    m_detail->setObjectName(QStringLiteral("statusDetail"));
    m_offer->setObjectName(QStringLiteral("statusOffer"));
    m_workText->setObjectName(QStringLiteral("workText"));
    m_workText->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    nameControl(m_undo, QStringLiteral("undoButton"), tr("Undo"));
    m_undo->setToolTip(tr("Undo (Ctrl+Z)"));
    nameControl(m_stop, QStringLiteral("stopButton"), tr("Stop"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(spacing::l, 1, spacing::m, 0);
    layout->setSpacing(spacing::m);
    // The message gets what the others leave: it is the one that can be guessed when it is cut.
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    // "Undo" follows its text, which gives way when there is little room.
    m_offer->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    auto *offer = new QHBoxLayout;
    offer->setSpacing(0);
    offer->addWidget(m_offer);
    offer->addWidget(m_undo);
    layout->addWidget(m_detail);
    layout->addLayout(offer);
    layout->addWidget(m_message, 1);
    layout->addStretch(0);
    layout->addWidget(m_workText);
    layout->addWidget(m_progress);
    layout->addWidget(m_stop);
    setFixedHeight(controlHeight(font()) + 6);
    connect(m_stop, &Button::clicked, this, &StatusBar::stopRequested);
    connect(m_undo, &Button::clicked, this, &StatusBar::undoRequested);
    showParts();
}

void StatusBar::setMessage(const QString &message, Tone tone, const QString &detail)
{
    m_message->setTone(tone == Tone::Error ? TextLabel::Tone::Red : TextLabel::Tone::Secondary);
    // What stands there already is not read aloud again.
    if (message == this->message() && detail == this->detail())
        return;
    m_message->setText(message);
    m_message->setAccessibleName(message);
    m_detail->setText(detail);
    m_detail->setAccessibleName(detail);
    showParts();
    announceNameChange(m_message);
    if (!detail.isEmpty())
        announceNameChange(m_detail);
}

QString StatusBar::message() const
{
    return m_message->text();
}

QString StatusBar::detail() const
{
    return m_detail->text();
}

void StatusBar::setOffer(const QString &offer)
{
    if (offer == m_offered)
        return;
    m_offered = offer;
    if (!offer.isEmpty()) {
        m_offer->setText(offer + QStringLiteral(" ·"));
        m_offer->setAccessibleName(offer);
        m_undo->setAccessibleDescription(offer);
    }
    showParts();
    if (!offer.isEmpty())
        announceNameChange(m_offer);
}

void StatusBar::setWork(const std::optional<Work> &work)
{
    m_work = work;
    showParts();
    if (!work)
        return;
    m_workText->setText(work->text);
    m_workText->setAccessibleName(work->text);
    m_progress->setFraction(work->fraction);
}

void StatusBar::showParts()
{
    const bool isOffering = !m_offered.isEmpty();
    const bool isEmpty =
        !isOffering && !m_work && message().isEmpty() && m_detail->text().isEmpty();
    // Without a parent, showing would open a window.
    if (isEmpty || parentWidget())
        setVisible(!isEmpty);
    m_offer->setVisible(isOffering);
    m_undo->setVisible(isOffering);
    m_detail->setVisible(!isOffering && !m_detail->text().isEmpty());
    m_message->setVisible(!isOffering);
    for (QWidget *part : {static_cast<QWidget *>(m_workText), static_cast<QWidget *>(m_progress),
                          static_cast<QWidget *>(m_stop)})
        part->setVisible(m_work.has_value());
}

void StatusBar::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_workText->setMaximumWidth(width() / 2);
    m_progress->setMaximumWidth(std::min(m_progress->sizeHint().width(), width() / 8));
}

void StatusBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        setFixedHeight(controlHeight(font()) + 6);
    if (event->type() == QEvent::ParentChange)
        showParts();
}

void StatusBar::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    painter.fillRect(rect(), tokens[Token::Surface]);
    drawHorizontalHairline(painter, 0, width(), 0, tokens[Token::Hairline]);
}

} // namespace veltrix
