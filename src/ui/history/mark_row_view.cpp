// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/mark_row_view.h"

#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/tool_tip_text.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/focus_steps.h"
#include "ui_kit/widgets/pressable.h"

#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr qreal corner = 5;

/// "Oct 26: New subtitle", a line each.
QStringList linesOf(const std::vector<DayMark> &marks,
                    const std::vector<RankingTimeline::Day> &days)
{
    QStringList lines;
    for (const DayMark &mark : marks)
        lines << MarkRowView::tr("%1: %2").arg(dayLabel(startOfUtcDay(mark.day), days), mark.text);
    return lines;
}

} // namespace

class MarkRowView::Mark final : public Pressable
{
public:
    explicit Mark(MarkRowView &row) : Pressable(&row), m_row(row) {}

    void show(PlacedMark placed, const std::vector<RankingTimeline::Day> &days)
    {
        m_placed = std::move(placed);
        m_lines = linesOf(m_placed.marks, days);
        const bool hasNote = std::ranges::any_of(m_placed.marks, &DayMark::isNote);
        const QString lines = m_lines.join(QStringLiteral("; "));
        setAccessibleName(hasNote ? tr("Note, %1").arg(lines) : tr("Noticed, %1").arg(lines));
        setToolTip(toolTipText(m_lines.join(u'\n')));
        QWidget::show();
        update();
    }

    [[nodiscard]] const PlacedMark &placed() const { return m_placed; }
    [[nodiscard]] const QStringList &lines() const { return m_lines; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const Tokens tokens = Tokens::of(this);
        QPainter painter(this);
        PlacedMark here = m_placed;
        here.rect = rect();
        drawRoundedRect(painter, rect(), corner,
                        tokens[isHovered() || isDown() ? Token::Selected : Token::Hairline]);
        const bool isNote = here.symbol == QLatin1String("flag");
        drawSymbol(painter, here.symbolRect(), here.symbol,
                   tokens[isNote ? Token::Text : Token::Secondary]);
        if (!here.text.isEmpty()) {
            painter.setFont(fontFor(TextStyle::Secondary, font()));
            painter.setPen(tokens[Token::Text]);
            painter.drawText(here.textRect(),
                             int(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine) |
                                 int(Qt::TextDontClip),
                             here.text);
        }
        paintFocusRing(painter, corner);
    }
    void focusInEvent(QFocusEvent *event) override
    {
        Pressable::focusInEvent(event);
        m_row.stopAt(this);
    }

private:
    MarkRowView &m_row;
    PlacedMark m_placed;
    QStringList m_lines;
};

MarkRowView::MarkRowView(QWidget *parent) : QWidget(parent)
{
    setAccessibleRole(this, QAccessible::Grouping);
    nameControl(this, QStringLiteral("historyMarks"), tr("Notes and noticed changes"));
    setLayoutDirection(Qt::LeftToRight);
    hide();
}

void MarkRowView::show(const std::vector<PlacedMark> &marks, QPoint origin,
                       const std::vector<RankingTimeline::Day> &days)
{
    QRectF row;
    for (const PlacedMark &mark : marks)
        row |= mark.rect;
    setGeometry(row.toAlignedRect().translated(origin));
    const QPoint corner = row.toAlignedRect().topLeft();
    for (size_t i = 0; i < marks.size(); ++i) {
        if (i == m_marks.size()) {
            auto *mark = new Mark(*this);
            mark->setObjectName(QStringLiteral("historyMark%1").arg(i));
            connect(mark, &Mark::clicked, this, [this, mark] { press(*mark); });
            m_marks.push_back(mark);
        }
        m_marks[i]->setGeometry(marks[i].rect.toRect().translated(-corner));
        m_marks[i]->show(marks[i], days);
    }
    while (m_marks.size() > marks.size()) {
        Mark *gone = m_marks.back();
        m_marks.pop_back();
        gone->hide();
        // It may be the one that was pressed.
        gone->deleteLater();
    }
    setVisible(!marks.empty());
    const auto stop = std::ranges::find_if(
        m_marks, [](const Mark *mark) { return mark->focusPolicy() == Qt::StrongFocus; });
    stopAt(stop != m_marks.end() ? *stop : m_marks.empty() ? nullptr : m_marks.front());
    putInTabOrder(*this, {m_marks.begin(), m_marks.end()});
}

void MarkRowView::stopAt(Mark *mark)
{
    for (Mark *one : m_marks)
        one->setFocusPolicy(one == mark ? Qt::StrongFocus : Qt::ClickFocus);
}

void MarkRowView::press(Mark &mark)
{
    const std::vector<DayMark> &marks = mark.placed().marks;
    const auto notes = std::ranges::count_if(marks, &DayMark::isNote);
    if (notes == 0) {
        Q_EMIT dayPressed(marks.front().day);
        return;
    }
    if (notes == 1) {
        Q_EMIT notePressed(std::ranges::find_if(marks, &DayMark::isNote)->noteId);
        return;
    }
    auto *menu = new QMenu(&mark);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    nameControl(menu, QStringLiteral("historyNotesMenu"), tr("Notes"));
    for (size_t i = 0; i < marks.size(); ++i) {
        if (!marks[i].isNote())
            continue;
        QString line = mark.lines()[qsizetype(i)];
        const QAction *action = menu->addAction(line.replace(u'&', QStringLiteral("&&")));
        connect(action, &QAction::triggered, this,
                [this, id = marks[i].noteId] { Q_EMIT notePressed(id); });
    }
    menu->popup(mark.mapToGlobal(QPoint(0, mark.height())));
}

void MarkRowView::keyPressEvent(QKeyEvent *event)
{
    const auto focused =
        std::ranges::find_if(m_marks, [](const Mark *mark) { return mark->hasFocus(); });
    const int count = int(m_marks.size());
    const auto to = focused == m_marks.end() ? std::nullopt
                                             : stepIn(count, int(focused - m_marks.begin()),
                                                      static_cast<Qt::Key>(event->key()), count, 1);
    event->setAccepted(to.has_value());
    if (!to)
        return;
    window()->setAttribute(Qt::WA_KeyboardFocusChange);
    m_marks[size_t(*to)]->setFocus(Qt::TabFocusReason);
}

} // namespace veltrix
