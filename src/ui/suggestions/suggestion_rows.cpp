// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/suggestion_rows.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/tool_tip_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/focus_steps.h"
#include "ui_kit/widgets/layouts.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr int symbolSide = 16;

} // namespace

SuggestionRow::SuggestionRow(QWidget *parent) : Pressable(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SuggestionRow::setSuggestion(const Suggestion &suggestion, qsizetype number, qsizetype count)
{
    m_suggestion = suggestion;
    setAccessibleName(spokenSuggestion(suggestion, number, count));
    setEnabled(!suggestion.isTracked);
    setCursor(suggestion.isTracked ? Qt::ArrowCursor : Qt::PointingHandCursor);
    update();
}

bool SuggestionRow::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        setToolTip(m_isElided ? toolTipText(shownLine(m_suggestion.term)) : QString());
    return Pressable::event(event);
}

QSize SuggestionRow::sizeHint() const
{
    return {scaledToFont(200, font()), controlHeight(font())};
}

QSize SuggestionRow::minimumSizeHint() const
{
    return {scaledToFont(120, font()), controlHeight(font())};
}

void SuggestionRow::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    const bool isLit = isEnabled() && (isHovered() || hasFocus());
    if (isLit)
        drawRoundedRect(painter, rect(), radius::control, tokens[Token::Selected]);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    QRect room = rect().adjusted(spacing::m - 1, 0, -spacing::m, 0);
    const auto takeEnd = [&](int width) {
        const QRect end(isMirrored ? room.left() : room.right() + 1 - width, room.top(), width,
                        room.height());
        if (isMirrored)
            room.setLeft(room.left() + width + spacing::s);
        else
            room.setRight(room.right() - width - spacing::s);
        return end;
    };
    const QRect end = takeEnd(symbolSide);
    const QRect symbol(end.x(), end.center().y() - symbolSide / 2, symbolSide, symbolSide);
    const QColor quiet = tokens[Token::Secondary];
    if (m_suggestion.isTracked) {
        drawSymbol(painter, symbol, QStringLiteral("checkmark"), quiet);
        const QFont small = fontFor(TextStyle::Secondary, font());
        const QString text = tr("Tracked");
        painter.setFont(small);
        painter.setPen(quiet);
        painter.drawText(takeEnd(QFontMetrics(small).horizontalAdvance(text)),
                         Qt::AlignCenter | Qt::TextSingleLine, text);
    } else {
        drawSymbol(painter, symbol, QStringLiteral("plus"), tokens[Token::Accent]);
    }
    const QFont font =
        fontFor(m_suggestion.isTracked ? TextStyle::Body : TextStyle::BodyMedium, this->font());
    const QString shown = shownLine(m_suggestion.term);
    const QString text = QFontMetrics(font).elidedText(shown, Qt::ElideRight, room.width());
    painter.setFont(font);
    painter.setPen(m_suggestion.isTracked ? quiet : tokens[Token::Text]);
    painter.drawText(
        room,
        int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter)) |
            Qt::TextSingleLine,
        text);
    m_isElided = text != shown;
    paintFocusRing(painter, radius::control);
}

SuggestionRows::SuggestionRows(Escape escape, QWidget *parent)
    : QWidget(parent), m_escape(escape), m_layout(makeColumn(0, this))
{
    setObjectName(QStringLiteral("suggestionRows"));
    hide();
}

void SuggestionRows::setSuggestions(const QList<Suggestion> &suggestions)
{
    while (m_rows.size() < suggestions.size()) {
        auto *row = new SuggestionRow;
        m_rows.append(row);
        row->setObjectName(QStringLiteral("suggestion%1").arg(m_rows.size()));
        connect(row, &SuggestionRow::clicked, this, [this, row] { Q_EMIT chosen(row->term()); });
        m_layout->addWidget(row);
    }
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        m_rows[i]->setVisible(i < suggestions.size());
        if (i < suggestions.size())
            m_rows[i]->setSuggestion(suggestions[i], i + 1, suggestions.size());
    }
    setVisible(!suggestions.isEmpty());
    putInTabOrder(*this, {m_rows.begin(), m_rows.end()});
}

bool SuggestionRows::enter()
{
    const auto first = std::find_if(m_rows.begin(), m_rows.end(), [](const SuggestionRow *row) {
        return row->isVisible() && row->isEnabled();
    });
    if (first == m_rows.end())
        return false;
    window()->setAttribute(Qt::WA_KeyboardFocusChange);
    (*first)->setFocus(Qt::TabFocusReason);
    return true;
}

void SuggestionRows::keyPressEvent(QKeyEvent *event)
{
    const bool leads = m_escape == Escape::LeadsOut;
    if (moveFocusAmong({m_rows.begin(), m_rows.end()}, *event))
        event->accept();
    else if (leads && (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Up))
        Q_EMIT left();
    else
        event->setAccepted(leads && event->key() == Qt::Key_Down);
}

} // namespace veltrix
