// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/segmented_control.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/focus_steps.h"
#include "ui_kit/widgets/layouts.h"

#include <QButtonGroup>
#include <QKeyEvent>
#include <QStyleOptionButton>

#include <cmath>

namespace veltrix
{

namespace
{

/// Between the choices, and around them.
constexpr int gap = 2;
constexpr int detailGap = 6;

} // namespace

/// A choice: its text, and its detail more quietly behind it.
class SegmentedControl::Segment final : public Button
{
public:
    Segment(SegmentedControl &control, int index)
        : Button(Kind::Plain, QString(), &control), m_control(control), m_index(index)
    {
        setCheckable(true);
        // Read as one choice of several, not as a box to check.
        setAutoExclusive(true);
    }

    void showChoice(const Choice &choice)
    {
        if (choice == m_choice)
            return;
        m_choice = choice;
        setText(choice.text);
        setAccessibleName(choice.name);
        updateGeometry();
        update();
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        const QSize size = Button::sizeHint();
        return m_choice.detail.isEmpty() ? size
                                         : size.grownBy({0, 0, detailGap + detailWidth(), 0});
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        if (m_choice.detail.isEmpty()) {
            Button::paintEvent(event);
            return;
        }
        QStyleOptionButton option;
        initStyleOption(&option);
        const Tokens tokens = Tokens::of(this);
        QPainter painter(this);
        const bool isTaken = isChecked() || isDown();
        if (isTaken || underMouse())
            drawRoundedRect(painter, rect(), radius::control,
                            tokens[isTaken ? Token::Selected : Token::Hover]);
        const QFont label = fontFor(TextStyle::BodyMedium, font());
        const int width = int(std::ceil(QFontMetricsF(label).horizontalAdvance(text())));
        QRect place(0, 0, width + detailGap + detailWidth(), height());
        place.moveCenter(rect().center());
        const auto part = [&](int from, int partWidth) {
            return QStyle::visualRect(layoutDirection(), rect(),
                                      QRect(place.left() + from, 0, partWidth, height()));
        };
        painter.setFont(label);
        painter.setPen(tokens[Token::Text]);
        painter.drawText(part(0, width), Qt::AlignCenter | Qt::TextSingleLine, text());
        painter.setFont(detailFont());
        painter.setPen(tokens[isTaken ? Token::Text : Token::Secondary]);
        painter.drawText(part(width + detailGap, detailWidth()),
                         Qt::AlignCenter | Qt::TextSingleLine, m_choice.detail);
        if (showsFocus(option))
            drawFocusRing(painter, rect(), radius::control, tokens[Token::Accent]);
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        if (!m_control.step(m_index, *event))
            Button::keyPressEvent(event);
    }

private:
    [[nodiscard]] QFont detailFont() const { return fontFor(TextStyle::Secondary, font()); }
    [[nodiscard]] int detailWidth() const
    {
        return int(std::ceil(QFontMetricsF(detailFont()).horizontalAdvance(m_choice.detail)));
    }

    SegmentedControl &m_control;
    int m_index;
    Choice m_choice;
};

SegmentedControl::SegmentedControl(const QString &objectName, const QString &name,
                                   const QString &choiceName, const QList<Choice> &choices,
                                   QWidget *parent)
    : QWidget(parent), m_buttons(new QButtonGroup(this))
{
    setAccessibleRole(this, QAccessible::Grouping);
    nameControl(this, objectName, name);
    auto *layout = makeRow(gap, this, {gap, gap, gap, gap});
    for (int index = 0; index < choices.size(); ++index) {
        auto *segment = new Segment(*this, index);
        segment->setObjectName(choiceName + QString::number(index));
        segment->showChoice(choices[index]);
        m_buttons->addButton(segment, index);
        layout->addWidget(segment);
    }
    choose(0);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // Assistive technology toggles a button without a click.
    connect(m_buttons, &QButtonGroup::idToggled, this, [this](int index, bool isChosen) {
        if (!isChosen)
            return;
        stopAtChosen();
        Q_EMIT changed(index);
    });
    stopAtChosen();
}

SegmentedControl::Segment *SegmentedControl::segment(int index) const
{
    return static_cast<Segment *>(m_buttons->button(index));
}

void SegmentedControl::stopAtChosen()
{
    // The toolkit does so only once one of them has had the focus, whichever was chosen before.
    for (QAbstractButton *button : m_buttons->buttons())
        button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
}

int SegmentedControl::chosen() const
{
    return m_buttons->checkedId();
}

void SegmentedControl::choose(int index)
{
    segment(index)->setChecked(true);
}

void SegmentedControl::setChoice(int index, const Choice &choice)
{
    segment(index)->showChoice(choice);
}

int SegmentedControl::wholeWidth() const
{
    int width = gap;
    for (const QAbstractButton *button : m_buttons->buttons())
        width += button->sizeHint().width() + gap;
    return width;
}

void SegmentedControl::fitInto(int width)
{
    int needed = wholeWidth();
    for (int index = int(m_buttons->buttons().size()) - 1; index >= 0; --index) {
        const bool givesWay = needed > width && index != chosen();
        if (givesWay)
            needed -= segment(index)->sizeHint().width() + gap;
        segment(index)->setVisible(!givesWay);
    }
}

QList<int> SegmentedControl::hiddenChoices() const
{
    QList<int> hidden;
    for (int index = 0; index < m_buttons->buttons().size(); ++index) {
        if (segment(index)->isHidden())
            hidden.append(index);
    }
    return hidden;
}

bool SegmentedControl::step(int index, const QKeyEvent &event)
{
    if (event.modifiers().testAnyFlags(~Qt::KeyboardModifiers(Qt::KeypadModifier)))
        return false;
    const int count = int(m_buttons->buttons().size());
    const auto to =
        stepIn(count, index, static_cast<Qt::Key>(event.key()), count, 1, layoutDirection());
    if (!to)
        return false;
    // One that had given way has the focus before the others give way to it.
    segment(*to)->setVisible(true);
    segment(*to)->setFocus(Qt::TabFocusReason);
    choose(*to);
    return true;
}

void SegmentedControl::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    drawRoundedRect(painter, rect(), radius::control + 1, Qt::transparent, tokens[Token::Hairline]);
}

} // namespace veltrix
