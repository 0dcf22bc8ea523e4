// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_chart_view.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"

#include <QtCharts/QCategoryAxis>
#include <QtCharts/QLineSeries>
#include <QtCharts/QScatterSeries>

#include <QGraphicsLayout>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal strokeWidth = 2;
constexpr qreal largestPoint = 9;
constexpr qreal smallestPoint = 3;
/// Share of a day's column that a point may fill.
constexpr qreal pointShare = 0.6;
constexpr qreal crossArm = 4;
/// Keeps the labels clear of the focus ring.
constexpr QMargins ringMargins(6, 4, 4, 4);
/// Room between two day labels.
constexpr qreal labelGap = 24;

} // namespace

RankChart::View::View(RankChart &owner)
    : QChartView(&owner), m_owner(owner), m_days(new QCategoryAxis), m_ranks(new QCategoryAxis)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_TranslucentBackground);
    setBackgroundBrush(Qt::NoBrush);
    viewport()->setAutoFillBackground(false);
    viewport()->setFocusPolicy(Qt::NoFocus);
    setRenderHint(QPainter::Antialiasing);
    setViewportUpdateMode(FullViewportUpdate);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    chart()->legend()->hide();
    chart()->setBackgroundVisible(false);
    chart()->setPlotAreaBackgroundVisible(false);
    chart()->setMargins(ringMargins);
    chart()->layout()->setContentsMargins(0, 0, 0, 0);
    chart()->setAnimationOptions(QChart::NoAnimation);
    for (QCategoryAxis *axis : {m_days, m_ranks}) {
        axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
        axis->setLineVisible(false);
        axis->setTruncateLabels(false);
        axis->setGridLineVisible(false);
    }
    m_ranks->setReverse(true);
    chart()->addAxis(m_days, Qt::AlignBottom);
    chart()->addAxis(m_ranks, Qt::AlignLeft);
}

RankPlot RankChart::View::plot() const
{
    return {chart()->plotArea(), m_owner.data().days.size(),
            rankAxis(m_owner.data().worstRank()).bottom};
}

qreal RankChart::View::pointSize() const
{
    const RankPlot plotted = plot();
    const qreal column = plotted.area.width() / double(std::max<size_t>(plotted.dayCount, 1));
    return std::clamp(column * pointShare, smallestPoint, largestPoint);
}

void RankChart::View::rebuild()
{
    chart()->removeAllSeries();
    const RankPlot plotted = plot();
    const RankAxis ranks = rankAxis(m_owner.data().worstRank());
    for (const QString &label : m_ranks->categoriesLabels())
        m_ranks->remove(label);
    m_ranks->setRange(plotted.topY(), plotted.bottomY());
    m_ranks->setStartValue(plotted.topY());
    for (const std::int64_t rank : ranks.ticks)
        m_ranks->append(QString::number(rank), double(rank));
    m_days->setRange(plotted.firstX(), plotted.lastX());
    m_days->setStartValue(plotted.firstX());
    m_dayLabels = -1;
    labelDays();
    addSeries();
    restyle();
}

void RankChart::View::labelDays()
{
    const auto &days = m_owner.data().days;
    if (days.empty())
        return;
    const QFontMetricsF metrics(fontFor(TextStyle::Secondary, m_owner.font()));
    const qreal label = metrics.horizontalAdvance(dayLabel(days.back().date, days)) + labelGap;
    const int most = std::max(1, int(chart()->plotArea().width() / label));
    if (most == m_dayLabels)
        return;
    m_dayLabels = most;
    for (const QString &text : m_days->categoriesLabels())
        m_days->remove(text);
    for (const DayTick &tick : dayTicks(days, size_t(most)))
        m_days->append(tick.label, double(tick.day));
}

void RankChart::View::addSeries()
{
    const auto add = [this](QXYSeries *series) {
        chart()->addSeries(series);
        series->attachAxis(m_days);
        series->attachAxis(m_ranks);
    };
    const auto &points = m_owner.data().points;
    for (auto first = points.begin(); first != points.end();) {
        const auto last = std::find_if(first, points.end(), [&](const RankPoint &point) {
            return point.segment != first->segment;
        });
        auto *line = new QLineSeries;
        line->setName(QStringLiteral("Ranked run"));
        for (; first != last; ++first)
            line->append(double(first->day), double(first->rank));
        add(line);
    }
    auto *marks = new QScatterSeries;
    for (const RankPoint &point : points)
        marks->append(double(point.day), double(point.rank));
    add(marks);
}

void RankChart::View::restyle()
{
    const Tokens tokens = Tokens::of(&m_owner);
    const QFont labels = fontFor(TextStyle::Secondary, m_owner.font());
    for (QCategoryAxis *axis : {m_days, m_ranks}) {
        axis->setLabelsFont(labels);
        axis->setLabelsColor(tokens[Token::Secondary]);
    }
    const QPen line(tokens[Token::Accent], strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    for (QAbstractSeries *series : chart()->series()) {
        if (auto *marks = qobject_cast<QScatterSeries *>(series)) {
            marks->setMarkerSize(pointSize());
            marks->setBrush(tokens[Token::Raised]);
            marks->setPen(line);
        } else if (auto *run = qobject_cast<QLineSeries *>(series)) {
            run->setPen(line);
        }
    }
}

void RankChart::View::resizeEvent(QResizeEvent *event)
{
    QChartView::resizeEvent(event);
    labelDays();
    restyle();
}

void RankChart::View::drawBackground(QPainter *painter, const QRectF &)
{
    const RankPlot plotted = plot();
    const QColor hairline = Tokens::of(&m_owner)[Token::Hairline];
    for (const std::int64_t rank : rankAxis(m_owner.data().worstRank()).ticks)
        drawHorizontalHairline(*painter, plotted.area.left(), plotted.area.right(),
                               std::round(plotted.y(double(rank))), hairline);
}

void RankChart::View::drawForeground(QPainter *painter, const QRectF &)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const Tokens tokens = Tokens::of(&m_owner);
    drawUnranked(*painter, tokens);
    drawSelection(*painter, tokens);
    QStyleOption option;
    option.initFrom(&m_owner);
    if (showsFocus(option))
        drawFocusRing(*painter, rect(), radius::control, tokens[Token::Accent]);
    painter->restore();
}

void RankChart::View::drawUnranked(QPainter &painter, const Tokens &tokens) const
{
    const RankPlot plotted = plot();
    const qreal arm = crossArm * std::max(0.5, pointSize() / largestPoint);
    painter.setPen(QPen(tokens[Token::Red], strokeWidth, Qt::SolidLine, Qt::RoundCap));
    for (const size_t day : m_owner.data().unranked) {
        const QPointF centre = plotted.unrankedMark(day);
        painter.drawLine(centre + QPointF(-arm, -arm), centre + QPointF(arm, arm));
        painter.drawLine(centre + QPointF(-arm, arm), centre + QPointF(arm, -arm));
    }
}

void RankChart::View::drawSelection(QPainter &painter, const Tokens &tokens) const
{
    const auto selected = m_owner.selectedDay();
    if (!selected)
        return;
    const RankPlot plotted = plot();
    // In the middle of a pixel, so that the dashes are crisp.
    const qreal x = std::floor(plotted.x(*selected)) + 0.5;
    QPen crosshair(tokens[Token::Secondary], 1.2);
    crosshair.setDashPattern({3, 3});
    painter.setPen(crosshair);
    painter.drawLine(QPointF(x, plotted.area.top()), QPointF(x, plotted.area.bottom()));
    if (const RankPoint *point = m_owner.data().pointOf(*selected)) {
        const qreal radius = pointSize() / 2 + 1.5;
        painter.setPen(Qt::NoPen);
        painter.setBrush(tokens[Token::Accent]);
        painter.drawEllipse(plotted.at(point->day, point->rank), radius, radius);
    }
}

} // namespace veltrix
