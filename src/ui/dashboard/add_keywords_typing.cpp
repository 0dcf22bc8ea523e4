// SPDX-License-Identifier: GPL-3.0-or-later
// Suggestions for what is typed into the add popover, and the keys that lead to them.
#include "ui/dashboard/add_keywords.h"

#include "ui/suggestions/suggestion_panel.h"
#include "ui_kit/widgets/storefront_checklist.h"
#include "ui_kit/widgets/text_area.h"

#include <QKeyEvent>
#include <QTextCursor>

namespace veltrix
{

void AddKeywordsCard::connectSuggestions()
{
    m_field->installEventFilter(this);
    connect(m_field, &QPlainTextEdit::textChanged, this, &AddKeywordsCard::followCaret);
    connect(m_field, &QPlainTextEdit::cursorPositionChanged, this, &AddKeywordsCard::followCaret);
    connect(m_storefronts, &StorefrontCheckModel::checkedChanged, this, [this] {
        followCaret();
        // Another storefront may lack what these have.
        m_suggested->showState();
    });
    connect(m_suggested, &SuggestionPanel::chosen, this, &AddKeywordsCard::takeSuggestion);
    connect(m_suggested, &SuggestionPanel::left, m_field, qOverload<>(&QWidget::setFocus));
}

void AddKeywordsCard::followCaret()
{
    const KeywordInText line = keywordAt(m_field->toPlainText(), m_field->textCursor().position());
    m_suggestions->follow(line.keyword, m_storefronts->checked().value(0));
}

void AddKeywordsCard::takeSuggestion(const QString &term)
{
    QTextCursor cursor = m_field->textCursor();
    const KeywordInText line = keywordAt(m_field->toPlainText(), cursor.position());
    m_suggestions->settle(term);
    cursor.setPosition(int(line.begin));
    cursor.setPosition(int(line.end), QTextCursor::KeepAnchor);
    cursor.insertText(term);
    m_field->setTextCursor(cursor);
    m_field->setFocus();
}

bool AddKeywordsCard::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        const auto *pressed = static_cast<QKeyEvent *>(event);
        const bool isDown =
            pressed->key() == Qt::Key_Down && !(pressed->modifiers() & ~Qt::KeypadModifier);
        QTextCursor cursor = m_field->textCursor();
        const bool isLastLine = !cursor.movePosition(QTextCursor::Down);
        if (isDown && isLastLine && m_suggested->enter())
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace veltrix
