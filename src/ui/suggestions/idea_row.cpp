// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/suggestions/idea_row.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/text/tool_tip_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/badge.h"
#include "ui_kit/widgets/button.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace veltrix
{

IdeaRow::IdeaRow(QWidget *parent)
    : Pressable(parent), m_track(new Button(Button::Kind::Link, tr("Track"), this))
{
    setCheckable(true);
    setAccessibleRole(this, QAccessible::CheckBox);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(m_track, &Button::clicked, this, &IdeaRow::trackRequested);
}

void IdeaRow::setIdea(const KeywordIdea &idea)
{
    m_idea = idea;
    const QString phrase = inSentence(idea.phrase);
    setAccessibleName(
        tr("%1, %2, %3").arg(phrase, storefrontName(idea.country), ideaReasons(idea)));
    nameControl(m_track, QStringLiteral("ideaTrack"),
                tr("Track %1 in %2").arg(phrase, storefrontName(idea.country)));
    update();
}

QSize IdeaRow::sizeHint() const
{
    return {scaledToFont(420, font()), twoLineRowHeight(font())};
}

QSize IdeaRow::minimumSizeHint() const
{
    return {scaledToFont(220, font()), twoLineRowHeight(font())};
}

void IdeaRow::placeButton()
{
    const QSize size = m_track->sizeHint();
    const int x =
        layoutDirection() == Qt::RightToLeft ? spacing::s : width() - spacing::s - size.width();
    m_track->setGeometry(QRect({x, (height() - size.height()) / 2}, size));
}

void IdeaRow::resizeEvent(QResizeEvent *event)
{
    Pressable::resizeEvent(event);
    placeButton();
}

bool IdeaRow::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        setToolTip(toolTipText(ideaReasons(m_idea)));
    else if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange)
        placeButton();
    return Pressable::event(event);
}

void IdeaRow::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    if (isHovered() || isChecked())
        drawRoundedRect(painter, rect(), radius::control,
                        tokens[isChecked() ? Token::Selected : Token::Hover]);
    const auto place = [this](const QRect &part) {
        return QStyle::visualRect(layoutDirection(), rect(), part);
    };

    QStyleOption box;
    box.initFrom(this);
    box.state.setFlag(QStyle::State_On, isChecked());
    box.state.setFlag(QStyle::State_Off, !isChecked());
    const int side = style()->pixelMetric(QStyle::PM_IndicatorWidth, &box, this);
    box.rect = place({spacing::s, (height() - side) / 2, side, side});
    style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, this);

    const int left = spacing::s + side + spacing::m;
    const int right = width() - m_track->sizeHint().width() - 2 * spacing::s;
    const QFont bold = fontFor(TextStyle::BodyMedium, font());
    const QFont small = fontFor(TextStyle::Secondary, font());
    const int upper = QFontMetrics(bold).height();
    const int lower = QFontMetrics(small).height();
    const int top = (height() - upper - lower) / 2;
    const auto alignment =
        int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeading | Qt::AlignVCenter)) |
        Qt::TextSingleLine;

    const QSize code = codeBadgeSize(m_idea.country, font()).toSize();
    const int room = std::max(0, right - left - code.width() - spacing::s);
    const QString phrase =
        QFontMetrics(bold).elidedText(shownLine(m_idea.phrase), Qt::ElideRight, room);
    const int width = QFontMetrics(bold).horizontalAdvance(phrase);
    painter.setFont(bold);
    painter.setPen(tokens[Token::Text]);
    painter.drawText(place({left, top, width + 1, upper}), alignment, phrase);
    paintCodeBadge(painter,
                   place({left + width + spacing::s, top + (upper - code.height()) / 2,
                          code.width(), code.height()}),
                   m_idea.country, tokens, font());
    painter.setFont(small);
    painter.setPen(tokens[Token::Secondary]);
    painter.drawText(
        place({left, top + upper, right - left, lower}), alignment,
        QFontMetrics(small).elidedText(ideaReasons(m_idea), Qt::ElideRight, right - left));
    paintFocusRing(painter, radius::control);
}

} // namespace veltrix
