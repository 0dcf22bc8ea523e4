// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_chart.h"

#include "ui/history/rank_chart_accessibility.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

/// Lower, a step of one rank could not be seen.
constexpr int leastHeight = 200;
/// One notch of a wheel, in the toolkit's eighths of a degree.
constexpr int wheelStep = 120;
/// What is left of the days after a notch of the wheel forwards, and after +.
constexpr double zoomStep = 0.8;
constexpr double keyZoomStep = 0.5;
/// The share of the shown days that a notch of the wheel sideways moves by.
constexpr double movedByWheel = 0.15;

} // namespace

RankChart::RankChart(QWidget *parent) : QWidget(parent)
{
    installRankChartAccessibility();
    nameControl(this, QStringLiteral("rankChart"), tr("Ranking trend"));
    setAccessibleDescription(
        tr("Rank by day (UTC). Lower rank is better. The keys + and − narrow and widen the days "
           "that are shown, 0 shows all of them. N writes a note on the day."));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

std::optional<Date> RankChart::inspectedDate() const
{
    if (!m_selected || *m_selected >= data().days.size())
        return std::nullopt;
    return data().days[*m_selected].date;
}

void RankChart::setData(ComparedChart data)
{
    const std::optional<Date> inspected = inspectedDate();
    std::optional<std::pair<Date, Date>> narrowed;
    if (isNarrowed())
        narrowed = {m_part.days().front().date, m_part.days().back().date};
    forgetRankChartAccessibility(*this);
    m_whole = std::move(data);
    DaySpan shown = wholeRange(m_whole.days().size());
    if (narrowed && shown.count > 0) {
        const auto dayOf = [&](Date date) {
            const auto after =
                std::ranges::upper_bound(m_whole.days(), date, {}, &RankingTimeline::Day::date);
            return size_t(std::max<std::ptrdiff_t>(0, after - m_whole.days().begin() - 1));
        };
        shown = spanBetween(dayOf(narrowed->first), dayOf(narrowed->second), shown.count);
    }
    setShown(shown, inspected);
}

void RankChart::showDays(const DaySpan &days)
{
    if (days == m_shown)
        return;
    forgetRankChartAccessibility(*this);
    setShown(days, inspectedDate());
}

void RankChart::setShown(const DaySpan &days, std::optional<Date> inspected)
{
    m_shown = days;
    m_part = {};
    if (isNarrowed())
        m_part = slicedChart(m_whole, days);
    m_checked.clear();
    std::optional<size_t> selected;
    for (size_t day = 0; day < data().days.size(); ++day) {
        if (data().days[day].observation || compared().hasCheck(day))
            m_checked.push_back(day);
        if (data().days[day].date == inspected)
            selected = day;
    }
    m_selected = selected;
    m_geometry.reset();
    update();
    Q_EMIT marksMoved();
    Q_EMIT shownDaysChanged();
    Q_EMIT selectedDayChanged(m_selected);
}

void RankChart::setSelectedDay(std::optional<size_t> day)
{
    if (day && *day >= data().days.size())
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
        m_geometry = layoutRankChart(rect(), metrics, compared());
        m_layer.reset();
    }
    return *m_geometry;
}

QRectF RankChart::markOf(size_t day) const
{
    const RankChartGeometry &chart = geometryNow();
    const QPointF centre = chart.plot.markOf(data(), day);
    const qreal side = chart.line.pointSide;
    return {centre.x() - side / 2, centre.y() - side / 2, side, side};
}

void RankChart::paintEvent(QPaintEvent *)
{
    const Tokens tokens = Tokens::of(this);
    QPainter painter(this);
    paintChartGround(painter, geometryNow(), tokens);
    paintLines(painter, tokens);
    paintChartTexts(painter, geometryNow(), fontFor(TextStyle::Secondary, font()), tokens);
    if (m_selected)
        paintInspectedDay(painter, geometryNow(), compared(), *m_selected, tokens);
    if (m_drag && m_drag->isMeant)
        paintChosenDays(painter, geometryNow(), m_drag->from, m_drag->to, tokens);
    QStyleOption option;
    option.initFrom(this);
    if (showsFocus(option))
        drawFocusRing(painter, rect(), radius::control, tokens[Token::Accent]);
}

void RankChart::paintLines(QPainter &painter, const Tokens &tokens)
{
    if (geometryNow().rivals.empty()) {
        paintChartLines(painter, geometryNow(), tokens, m_emphasized);
        return;
    }
    // Sharp in a picture, too, whose scale is another one than the screen's.
    const qreal scale = painter.deviceTransform().m11();
    const bool isUsable = m_layer && m_layer->scheme == tokens.scheme() &&
                          m_layer->emphasized == m_emphasized &&
                          qFuzzyCompare(m_layer->picture.devicePixelRatio(), scale);
    if (!isUsable) {
        QPixmap picture((QSizeF(size()) * scale).toSize());
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        QPainter lines(&picture);
        paintChartLines(lines, geometryNow(), tokens, m_emphasized);
        m_layer = Layer{picture, tokens.scheme(), m_emphasized};
    }
    painter.drawPixmap(0, 0, m_layer->picture);
}

void RankChart::emphasize(std::optional<std::int64_t> line)
{
    if (line == m_emphasized)
        return;
    m_emphasized = line;
    update();
}

QSize RankChart::sizeHint() const
{
    return {680, 270};
}

QSize RankChart::minimumSizeHint() const
{
    return {240, leastHeight};
}

void RankChart::inspect(const QPointF &position)
{
    std::vector<const RankChartData *> lines;
    for (const ComparedLine *line : compared().shownLines())
        lines.push_back(&line->data);
    setSelectedDay(dayNear(plot(), lines, position));
}

void RankChart::mouseMoveEvent(QMouseEvent *event)
{
    if (m_drag && event->buttons().testFlag(Qt::LeftButton)) {
        m_drag->to = event->position().x();
        m_drag->isMeant = m_drag->isMeant ||
                          std::abs(m_drag->to - m_drag->from) >= QApplication::startDragDistance();
        update();
    }
    inspect(event->position());
}

void RankChart::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    if (event->button() == Qt::LeftButton)
        m_drag = Drag{event->position().x(), event->position().x()};
    inspect(event->position());
}

void RankChart::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const std::optional<Drag> drag = std::exchange(m_drag, std::nullopt);
    update();
    if (!drag || !drag->isMeant)
        return;
    const auto from = plot().dayAt(drag->from);
    const auto to = plot().dayAt(drag->to);
    if (from && to)
        showDays(spanBetween(m_shown.first + *from, m_shown.first + *to, m_whole.days().size()));
}

void RankChart::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_drag.reset();
    inspect(event->position());
    requestNote(m_selected);
}

void RankChart::requestNote(std::optional<size_t> day)
{
    if (!day && !data().days.empty())
        day = data().days.size() - 1;
    if (!day)
        return;
    setSelectedDay(day);
    Q_EMIT noteRequested(*day);
}

void RankChart::wheelEvent(QWheelEvent *event)
{
    const QPoint turn = event->angleDelta();
    const bool isAside = std::abs(turn.x()) > std::abs(turn.y());
    if (isAside && isNarrowed()) {
        m_turnedAside += turn.x();
        const double share = double(m_turnedAside) / wheelStep * movedByWheel;
        const auto days = std::int64_t(share * double(m_shown.count));
        if (days != 0) {
            m_turnedAside = 0;
            showDays(moved(m_shown, -days, m_whole.days().size()));
        }
        inspect(event->position());
    } else if (!isAside && event->modifiers().testFlag(Qt::ControlModifier)) {
        // So that Escape leads back from here.
        setFocus(Qt::MouseFocusReason);
        m_turned += turn.y();
        if (std::abs(m_turned) >= wheelStep / 2) {
            const int turned = std::exchange(m_turned, 0);
            zoom(std::pow(zoomStep, double(turned) / wheelStep),
                 plot().dayAt(event->position().x()));
            inspect(event->position());
        }
    } else {
        event->ignore();
    }
}

void RankChart::zoom(double factor, std::optional<size_t> around)
{
    if (m_shown.count == 0)
        return;
    const size_t anchor = m_shown.first + around.value_or(m_shown.count / 2);
    showDays(zoomed(m_shown, factor, anchor, m_whole.days().size()));
}

void RankChart::leaveEvent(QEvent *)
{
    // A day that was chosen by keys stays; one that was pointed at goes with the pointer.
    if (!hasFocus())
        setSelectedDay(std::nullopt);
}

void RankChart::step(DayStep step)
{
    const bool isBack = step == DayStep::Previous || step == DayStep::PreviousCheck;
    const std::optional<size_t> before = m_selected;
    setSelectedDay(stepDay(data(), m_selected, step));
    if (!isNarrowed() || !before || m_selected != before)
        return;
    // Over the edge of what is shown, to the next day of the range that the step means.
    const size_t inRange = m_shown.first + *before;
    const auto next = stepDay(m_whole.own.data, inRange, step);
    if (!next || *next == inRange)
        return;
    const std::int64_t days =
        std::int64_t(*next) - std::int64_t(isBack ? m_shown.first : m_shown.last());
    if (!m_shown.contains(*next))
        showDays(moved(m_shown, days, m_whole.days().size()));
    setSelectedDay(*next - m_shown.first);
}

bool RankChart::stepByKey(const QKeyEvent &event)
{
    const bool byCheck = event.modifiers().testFlag(Qt::ControlModifier);
    switch (event.key()) {
    case Qt::Key_Left:
        step(byCheck ? DayStep::PreviousCheck : DayStep::Previous);
        return true;
    case Qt::Key_Right:
        step(byCheck ? DayStep::NextCheck : DayStep::Next);
        return true;
    case Qt::Key_Home:
        setSelectedDay(stepDay(data(), m_selected, DayStep::First));
        return true;
    case Qt::Key_End:
        setSelectedDay(stepDay(data(), m_selected, DayStep::Last));
        return true;
    default:
        return false;
    }
}

bool RankChart::narrowByKey(const QKeyEvent &event)
{
    const auto page = std::int64_t(m_shown.count);
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoom(keyZoomStep, m_selected);
        return true;
    case Qt::Key_Minus:
        zoom(1 / keyZoomStep, m_selected);
        return true;
    case Qt::Key_0:
        showWholeRange();
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        // All days are shown: the keys scroll what is around.
        if (!isNarrowed())
            return false;
        showDays(
            moved(m_shown, event.key() == Qt::Key_PageUp ? -page : page, m_whole.days().size()));
        return true;
    default:
        return false;
    }
}

bool RankChart::letGo()
{
    if (m_drag && m_drag->isMeant) {
        m_drag.reset();
        update();
    } else if (isNarrowed()) {
        showWholeRange();
    } else if (m_selected) {
        setSelectedDay(std::nullopt);
    } else {
        return false;
    }
    return true;
}

void RankChart::keyPressEvent(QKeyEvent *event)
{
    const bool isNote = event->key() == Qt::Key_N && event->modifiers() == Qt::NoModifier;
    if (isNote) {
        requestNote(m_selected);
        return;
    }
    const bool isTaken =
        event->key() == Qt::Key_Escape ? letGo() : stepByKey(*event) || narrowByKey(*event);
    if (!isTaken)
        QWidget::keyPressEvent(event);
}

void RankChart::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Q_EMIT marksMoved();
}

void RankChart::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        m_geometry.reset();
        Q_EMIT marksMoved();
    }
}

} // namespace veltrix
