// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/settings_section.h"

#include "ui/theme/painting.h"
#include "ui/widgets/accessibility.h"
#include "ui/widgets/text_label.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace veltrix
{

SettingsSection::SettingsSection(const QString &title, QWidget *parent)
    : QWidget(parent), m_card(new QWidget), m_rows(new QVBoxLayout)
{
    setAccessibleRole(this, QAccessible::Grouping);
    setAccessibleName(title);
    m_rows->setContentsMargins(spacing::l, spacing::s, spacing::m, spacing::s);
    m_rows->setSpacing(0);
    m_card->setLayout(m_rows);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::s);
    layout->addWidget(new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, title));
    layout->addWidget(m_card);
}

void SettingsSection::addRow(const QString &label, QWidget *control)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::m);
    auto *text = new TextLabel(TextStyle::Body, TextLabel::Tone::Text, label);
    text->setBuddy(control);
    layout->addWidget(text);
    layout->addStretch(1);
    layout->addWidget(control);
    addRow(row);
}

void SettingsSection::addRow(QWidget *control)
{
    control->setMinimumHeight(oneLineRowHeight(font()) + 2);
    m_rows->addWidget(control);
    m_rowStarts.append(control);
}

void SettingsSection::addNote(const QString &text, const QString &objectName)
{
    auto *note = new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary, text);
    note->setObjectName(objectName);
    note->setWrapping(TextLabel::Wrapping::Wrapped);
    m_rows->addWidget(note);
    m_rows->addSpacing(spacing::s);
}

void SettingsSection::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    drawRoundedRect(painter, m_card->geometry(), radius::card, Qt::transparent,
                    tokens[Token::Hairline]);
    for (qsizetype i = 1; i < m_rowStarts.size(); ++i) {
        const QPoint top = m_rowStarts[i]->mapTo(this, QPoint());
        drawHorizontalHairline(painter, top.x(), m_card->geometry().right() - spacing::m, top.y(),
                               tokens[Token::Hairline]);
    }
}

} // namespace veltrix
