// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/settings_section.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/text_label.h"

namespace veltrix
{

SettingsSection::SettingsSection(const QString &title, QWidget *parent)
    // A link brings padding of its own, so that its text is in line with the labels.
    : QWidget(parent), m_card(new QWidget),
      m_rows(
          makeColumn(0, m_card, {spacing::l - spacing::xs, spacing::xs, spacing::m, spacing::xs}))
{
    setAccessibleRole(this, QAccessible::Grouping);
    setAccessibleName(title);
    auto *layout = makeColumn(spacing::s, this);
    layout->addWidget(makeHeading(title));
    layout->addWidget(m_card);
}

QWidget *SettingsSection::addRow(const QString &label, QWidget *control)
{
    auto *parts = new QWidget;
    auto *layout = makeRow(spacing::m, parts);
    auto *text = new TextLabel(TextStyle::Body, TextLabel::Tone::Text, label);
    text->setBuddy(control);
    layout->addWidget(text);
    layout->addStretch(1);
    layout->addWidget(control);
    addRow(parts);
    return parts;
}

void SettingsSection::addRow(QWidget *control)
{
    append(control, spacing::xs);
}

void SettingsSection::addLinks(const QList<Button *> &links)
{
    QBoxLayout *line = append(links.constFirst(), 0);
    for (Button *link : links.mid(1)) {
        line->addSpacing(spacing::m);
        line->addWidget(link);
    }
    line->addStretch(1);
}

QBoxLayout *SettingsSection::append(QWidget *control, int inset)
{
    control->setMinimumHeight(oneLineRowHeight(font()) + spacing::xs);
    auto *line = new QHBoxLayout;
    line->setContentsMargins(inset, 0, 0, 0);
    line->addWidget(control);
    m_rows->addLayout(line);
    m_rowControls.append(control);
    return line;
}

void SettingsSection::addContinuation(QWidget *content)
{
    auto *line = new QHBoxLayout;
    line->setContentsMargins(spacing::xs, 0, 0, 0);
    line->addWidget(content);
    m_rows->addLayout(line);
}

void SettingsSection::addNote(const QString &text, const QString &objectName)
{
    auto *note = makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, text, objectName);
    note->setContentsMargins(spacing::xs, 0, 0, 0);
    m_rows->addWidget(note);
    m_rows->addSpacing(spacing::s);
}

void SettingsSection::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    drawRoundedRect(painter, m_card->geometry(), radius::card, Qt::transparent,
                    tokens[Token::Hairline]);
    for (qsizetype i = 1; i < m_rowControls.size(); ++i) {
        if (!m_rowControls[i]->isVisibleTo(this))
            continue;
        drawHorizontalHairline(
            painter, m_card->x() + spacing::l, m_card->geometry().right() - spacing::m,
            m_rowControls[i]->mapTo(this, QPoint()).y(), tokens[Token::Hairline]);
    }
}

} // namespace veltrix
