// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/segmented_control.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"

#include <QButtonGroup>

namespace veltrix
{

SegmentedControl::SegmentedControl(const QString &objectName, const QString &name,
                                   const QString &choiceName, const QList<Choice> &choices,
                                   QWidget *parent)
    : QWidget(parent), m_buttons(new QButtonGroup(this))
{
    setAccessibleRole(this, QAccessible::Grouping);
    nameControl(this, objectName, name);
    auto *layout = makeRow(2, this, {2, 2, 2, 2});
    for (const Choice &choice : choices) {
        auto *button = new Button(Button::Kind::Plain, choice.text);
        const int index = int(m_buttons->buttons().size());
        nameControl(button, choiceName + QString::number(index), choice.name);
        button->setCheckable(true);
        // Read as one choice of several, not as a box to check.
        button->setAutoExclusive(true);
        m_buttons->addButton(button, index);
        layout->addWidget(button);
    }
    choose(0);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // Assistive technology toggles a button without a click.
    connect(m_buttons, &QButtonGroup::idToggled, this, [this](int index, bool isChosen) {
        if (isChosen)
            Q_EMIT changed(index);
    });
}

int SegmentedControl::chosen() const
{
    return m_buttons->checkedId();
}

void SegmentedControl::choose(int index)
{
    m_buttons->button(index)->setChecked(true);
}

void SegmentedControl::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    drawRoundedRect(painter, rect(), radius::control + 1, Qt::transparent, tokens[Token::Hairline]);
}

} // namespace veltrix
