// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/range_control.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/button.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>

namespace veltrix
{

RangeControl::RangeControl(QWidget *parent) : QWidget(parent), m_buttons(new QButtonGroup(this))
{
    setAccessibleRole(this, QAccessible::Grouping);
    nameControl(this, QStringLiteral("historyRange"), tr("Period"));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    for (const HistoryRange range : allHistoryRanges) {
        auto *button = new Button(Button::Kind::Plain, rangeName(range));
        nameControl(button, QStringLiteral("historyRange%1").arg(int(range)), rangeTitle(range));
        button->setCheckable(true);
        // Read as one choice of several, not as a box to check.
        button->setAutoExclusive(true);
        m_buttons->addButton(button, int(range));
        layout->addWidget(button);
    }
    setRange(HistoryRange::Days14);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // Assistive technology toggles a button without a click.
    connect(m_buttons, &QButtonGroup::idToggled, this, [this](int id, bool isChosen) {
        if (isChosen)
            Q_EMIT rangeChanged(static_cast<HistoryRange>(id));
    });
}

HistoryRange RangeControl::range() const
{
    return static_cast<HistoryRange>(m_buttons->checkedId());
}

void RangeControl::setRange(HistoryRange range)
{
    m_buttons->button(int(range))->setChecked(true);
}

void RangeControl::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    drawRoundedRect(painter, rect(), radius::control + 1, Qt::transparent, tokens[Token::Hairline]);
}

} // namespace veltrix
