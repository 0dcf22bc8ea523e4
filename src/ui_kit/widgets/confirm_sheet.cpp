// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/confirm_sheet.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/overlay.h"
#include "ui_kit/widgets/text_label.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

constexpr int sheetWidth = 400;

/// The words of the question, and a row for its answers.
class QuestionCard final : public QWidget
{
public:
    explicit QuestionCard(const ConfirmSheet::Question &question) : m_answers(makeRow(spacing::s))
    {
        nameControl(this, QStringLiteral("confirmSheet"), question.title);
        setAccessibleDescription(question.message);
        auto *layout =
            makeColumn(spacing::s, this, {spacing::xl, spacing::xl, spacing::xl, spacing::l});
        layout->addWidget(new TextLabel(TextStyle::Title, TextLabel::Tone::Text, question.title));
        layout->addWidget(makeParagraph(TextStyle::Body, TextLabel::Tone::Secondary,
                                        question.message, QStringLiteral("confirmMessage")));
        layout->addSpacing(spacing::s);
        layout->addLayout(m_answers);
        m_answers->addStretch(1);
    }

    [[nodiscard]] QHBoxLayout &answers() { return *m_answers; }
    [[nodiscard]] QSize sizeHint() const override
    {
        const int width = std::max(sheetWidth, layout()->minimumSize().width());
        return {width, layout()->heightForWidth(width)};
    }

private:
    QHBoxLayout *m_answers;
};

Button *makeAnswer(Button::Kind kind, const char *objectName, const QString &text)
{
    auto *button = new Button(kind, text);
    nameControl(button, QString::fromLatin1(objectName), text);
    button->setAutoDefault(true);
    return button;
}

} // namespace

Overlay *ConfirmSheet::ask(QWidget *opener, const Question &question,
                           std::function<void()> confirmed, std::function<void()> otherwise)
{
    auto *card = new QuestionCard(question);
    auto *cancel = makeAnswer(Button::Kind::Standard, "confirmCancel",
                              QCoreApplication::translate("ConfirmSheet", "Cancel"));
    auto *confirm = makeAnswer(Button::Kind::Destructive, "confirmAccept", question.confirm);
    Button *alternative = nullptr;
    if (!question.alternative.isEmpty()) {
        alternative =
            makeAnswer(Button::Kind::Standard, "confirmAlternative", question.alternative);
        card->answers().insertWidget(0, alternative);
    }
    card->answers().addWidget(cancel);
    card->answers().addWidget(confirm);
    (alternative ? alternative : cancel)->setFocus();

    // It must be seen which answer Enter gives, however the question came up.
    opener->window()->setAttribute(Qt::WA_KeyboardFocusChange);
    Overlay *overlay = Overlay::open(Overlay::Kind::Sheet, opener, card);
    const auto answer = [overlay](Button *button, std::function<void()> then) {
        QObject::connect(button, &Button::clicked, overlay, [overlay, then = std::move(then)] {
            overlay->dismiss();
            if (then)
                then();
        });
    };
    answer(cancel, {});
    answer(confirm, std::move(confirmed));
    if (alternative)
        answer(alternative, std::move(otherwise));
    return overlay;
}

} // namespace veltrix
