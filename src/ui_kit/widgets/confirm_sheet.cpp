// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/confirm_sheet.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/text_label.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace veltrix
{

namespace
{

constexpr int sheetWidth = 400;

}

ConfirmSheet::ConfirmSheet(const Question &question, QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("confirmSheet"));
    setAccessibleName(question.title);
    setAccessibleDescription(question.message);
    auto *message = new TextLabel(TextStyle::Body, TextLabel::Tone::Secondary, question.message);
    message->setWrapping(TextLabel::Wrapping::Wrapped);
    message->setObjectName(QStringLiteral("confirmMessage"));
    auto *cancel = new Button(Button::Kind::Standard, tr("Cancel"));
    nameControl(cancel, QStringLiteral("confirmCancel"), tr("Cancel"));
    auto *confirm = new Button(Button::Kind::Destructive, question.confirm);
    nameControl(confirm, QStringLiteral("confirmAccept"), question.confirm);
    auto *alternative = new Button(Button::Kind::Standard, question.alternative);
    nameControl(alternative, QStringLiteral("confirmAlternative"), question.alternative);
    for (Button *button : {alternative, cancel, confirm})
        button->setAutoDefault(true);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(spacing::s);
    buttons->addWidget(alternative);
    buttons->addStretch(1);
    buttons->addWidget(cancel);
    buttons->addWidget(confirm);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::xl, spacing::xl, spacing::xl, spacing::l);
    layout->setSpacing(spacing::s);
    layout->addWidget(new TextLabel(TextStyle::Title, TextLabel::Tone::Text, question.title));
    layout->addWidget(message);
    layout->addSpacing(spacing::s);
    layout->addLayout(buttons);
    alternative->setVisible(!question.alternative.isEmpty());
    (question.alternative.isEmpty() ? cancel : alternative)->setFocus();
    connect(alternative, &Button::clicked, this, &ConfirmSheet::alternativeChosen);
    connect(cancel, &Button::clicked, this, &ConfirmSheet::cancelled);
    connect(confirm, &Button::clicked, this, &ConfirmSheet::confirmed);
}

QSize ConfirmSheet::sizeHint() const
{
    const int width = std::max(sheetWidth, layout()->minimumSize().width());
    return {width, layout()->heightForWidth(width)};
}

Overlay *ConfirmSheet::ask(QWidget *opener, const Question &question,
                           std::function<void()> confirmed, std::function<void()> otherwise)
{
    auto *sheet = new ConfirmSheet(question);
    // It must be seen which answer Enter gives, however the question came up.
    opener->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, opener, sheet);
    connect(sheet, &ConfirmSheet::cancelled, overlay, &Overlay::dismiss);
    connect(sheet, &ConfirmSheet::confirmed, overlay, [overlay, confirmed = std::move(confirmed)] {
        overlay->dismiss();
        confirmed();
    });
    connect(sheet, &ConfirmSheet::alternativeChosen, overlay,
            [overlay, otherwise = std::move(otherwise)] {
                overlay->dismiss();
                if (otherwise)
                    otherwise();
            });
    return overlay;
}

} // namespace veltrix
