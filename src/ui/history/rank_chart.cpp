// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_chart.h"

#include "ui/history/rank_chart_accessibility.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace veltrix
{

RankChart::RankChart(QWidget *parent) : QWidget(parent)
{
    installRankChartAccessibility();
    nameControl(this, QStringLiteral("rankChart"), tr("Ranking trend"));
    setAccessibleDescription(tr("Rank by day (UTC). Lower rank is better."));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void RankChart::setData(RankChartData data)
{
    std::optional<Date> inspected;
    if (m_selected && *m_selected < m_data.days.size())
        inspected = m_data.days[*m_selected].date;
    forgetRankChartAccessibility(*this);
    m_data = std::move(data);
    m_checked.clear();
    std::optional<size_t> selected;
    for (size_t day = 0; day < m_data.days.size(); ++day) {
        if (m_data.days[day].observation)
            m_checked.push_back(day);
        if (m_data.days[day].date == inspected)
            selected = day;
    }
    m_selected = selected;
    m_geometry.reset();
    update();
    Q_EMIT selectedDayChanged(m_selected);
}

void RankChart::setSelectedDay(std::optional<size_t> day)
{
    if (day && *day >= m_data.days.size())
        day.reset();
    if (day == m_selected)
        return;
    m_selected = day;
    update();
    announceSelection();
    Q_EMIT selectedDayChanged(m_selected);
}

void RankChart::announceSelection()
{
    if (!m_selected || !hasFocus())
        return;
    const auto child = std::ranges::lower_bound(m_checked, *m_selected);
    if (child == m_checked.end() || *child != *m_selected)
        return;
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(int(child - m_checked.begin()));
    QAccessible::updateAccessibility(&event);
}

const RankChartGeometry &RankChart::geometryNow() const
{
    if (!m_geometry || m_geometry->rect != QRectF(rect())) {
        const QFontMetricsF metrics(fontFor(TextStyle::Secondary, font()));
        m_geometry = layoutRankChart(rect(), metrics, m_data);
    }
    return *m_geometry;
}

QRectF RankChart::markOf(size_t day) const
{
    const RankChartGeometry &chart = geometryNow();
    const QPointF centre = chart.plot.markOf(m_data, day);
    const qreal side = chart.line.pointSide;
    return {centre.x() - side / 2, centre.y() - side / 2, side, side};
}

void RankChart::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    paintRankChart(painter, geometryNow(), fontFor(TextStyle::Secondary, font()), tokens);
    if (m_selected)
        paintInspectedDay(painter, geometryNow(), m_data, *m_selected, tokens);
    QStyleOption option;
    option.initFrom(this);
    if (showsFocus(option))
        drawFocusRing(painter, rect(), radius::control, tokens[Token::Accent]);
}

QSize RankChart::sizeHint() const
{
    return {680, 290};
}

QSize RankChart::minimumSizeHint() const
{
    return {240, 160};
}

void RankChart::inspect(const QPointF &position)
{
    setSelectedDay(dayNear(plot(), m_data, position));
}

void RankChart::mouseMoveEvent(QMouseEvent *event)
{
    inspect(event->position());
}

void RankChart::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    inspect(event->position());
}

void RankChart::leaveEvent(QEvent *)
{
    // A day that was chosen by keys stays; one that was pointed at goes with the pointer.
    if (!hasFocus())
        setSelectedDay(std::nullopt);
}

void RankChart::keyPressEvent(QKeyEvent *event)
{
    const bool byCheck = event->modifiers().testFlag(Qt::ControlModifier);
    std::optional<DayStep> step;
    switch (event->key()) {
    case Qt::Key_Left:
        step = byCheck ? DayStep::PreviousCheck : DayStep::Previous;
        break;
    case Qt::Key_Right:
        step = byCheck ? DayStep::NextCheck : DayStep::Next;
        break;
    case Qt::Key_Home:
        step = DayStep::First;
        break;
    case Qt::Key_End:
        step = DayStep::Last;
        break;
    case Qt::Key_Escape:
        if (m_selected) {
            setSelectedDay(std::nullopt);
            return;
        }
        break;
    default:
        break;
    }
    if (step)
        setSelectedDay(stepDay(m_data, m_selected, *step));
    else
        QWidget::keyPressEvent(event);
}

void RankChart::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        m_geometry.reset();
}

} // namespace veltrix
