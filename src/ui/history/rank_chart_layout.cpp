// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_chart_layout.h"

#include "ui/history/day_labels.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

struct ChartTexts {
    Q_DECLARE_TR_FUNCTIONS(RankChart)
};

/// Keeps labels and points clear of the focus ring.
constexpr QMarginsF ringMargins(6, 4, 6, 4);
/// From the ranks to the plot, and from the plot to the days.
constexpr qreal labelDistance = 8;
/// In heights of a label: least distance of two ranks on the axis, and gap between two days.
constexpr qreal rankPitch = 1.6;
constexpr qreal dayGap = 1.2;
constexpr qreal strokeWidth = 2;
/// Of a run that is a single point of the line.
constexpr qreal dotWidth = 4;
constexpr qreal crosshairWidth = 1.2;
/// Other lines are quieter than the own one, and much more so while one of them is meant.
constexpr qreal rivalStrokeWidth = 1.6;
constexpr qreal dimmed = 0.22;
constexpr qreal dayLineStrength = 0.6;
constexpr qreal veilStrength = 0.8;
/// From the lower end of the plot to the marks of days, and from a line to the words at it.
constexpr qreal markDistance = 2;
constexpr qreal beginningDistance = 8;
/// Of the marks of an inspected day.
constexpr qreal comparedMarkSide = 8;

RankChartLabel rankLabel(std::int64_t rank, const RankPlot &plot, const QFontMetricsF &metrics)
{
    const QString text = QString::number(rank);
    const qreal width = metrics.horizontalAdvance(text);
    return {QRectF(plot.area.left() - labelDistance - width,
                   plot.y(double(rank)) - metrics.height() / 2, width, metrics.height()),
            text};
}

/// The grid and its labels, as many of the axis's ranks as have room.
void layoutRanks(RankChartGeometry &chart, const RankAxis &axis, const QFontMetricsF &metrics)
{
    for (const std::int64_t rank : axis.ticks) {
        RankChartLabel label = rankLabel(rank, chart.plot, metrics);
        if (!chart.ranks.empty() && label.rect.top() < chart.ranks.back().rect.bottom())
            continue;
        chart.grid.push_back(chart.plot.y(double(rank)));
        chart.ranks.push_back(std::move(label));
    }
}

void drawCross(QPainter &painter, QPointF centre, qreal arm)
{
    painter.drawLine(centre + QPointF(-arm, -arm), centre + QPointF(arm, arm));
    painter.drawLine(centre + QPointF(-arm, arm), centre + QPointF(arm, -arm));
}

struct LineInk {
    QColor line;
    QColor cross;
    /// Inside of marks.
    QColor fill;
    qreal width = strokeWidth;
};

LineInk inkOf(const LineLook &look, bool isDimmed, const Tokens &tokens)
{
    const auto ink = [&](Token token) {
        QColor color = tokens[token];
        if (isDimmed)
            color.setAlphaF(float(dimmed));
        return color;
    };
    return {ink(look.token), ink(Token::Red),
            look.isFilled ? ink(look.token) : tokens[Token::Raised],
            look == ownLook() ? strokeWidth : rivalStrokeWidth};
}

void paintRuns(QPainter &painter, const RankLine &line, const LineInk &ink)
{
    const QPen stroke(ink.line, ink.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    QPen dot = stroke;
    dot.setWidthF(dotWidth);
    for (const QPolygonF &run : line.runs) {
        painter.setPen(run.size() == 1 ? dot : stroke);
        if (run.size() == 1)
            painter.drawPoint(run.front());
        else
            painter.drawPolyline(run);
    }
}

void paintLine(QPainter &painter, const RankLine &line, const LineLook &look, const LineInk &ink)
{
    paintRuns(painter, line, ink);
    for (const QPointF &point : line.points)
        paintMark(painter, look, point, line.pointSide, ink.line, ink.fill, ink.width);
}

void paintCrosses(QPainter &painter, const RankLine &line, const LineInk &ink)
{
    painter.setPen(QPen(ink.cross, strokeWidth, Qt::SolidLine, Qt::RoundCap));
    for (const QPointF &centre : line.crosses)
        drawCross(painter, centre, line.crossArm);
}

/// The heights of the lines that cross from `left` to `right`.
std::vector<qreal> heightsBetween(const RankPlot &plot, const RankChartData &data, qreal left,
                                  qreal right)
{
    std::vector<qreal> heights;
    for (const RankPoint &point : data.points) {
        const QPointF place = plot.at(point.day, point.rank);
        if (place.x() >= left - beginningDistance && place.x() <= right)
            heights.push_back(place.y());
    }
    return heights;
}

/// Says at the first check of a line since when its app is tracked: below the line or above it,
/// where fewer checks of others are in the way.
void layoutBeginning(RankChartGeometry &chart, const ComparedChart &compared,
                     const ComparedLine &line, const QFontMetricsF &metrics, const QLocale &locale)
{
    if (!line.trackedSince || line.data.points.empty() ||
        *line.trackedSince <= compared.days().front().date)
        return;
    const RankPlot &plot = chart.plot;
    const QString text = ChartTexts::tr("Tracked since %1")
                             .arg(dayLabel(*line.trackedSince, compared.days(), locale));
    const QSizeF size(std::ceil(metrics.horizontalAdvance(text)), metrics.height());
    const qreal left =
        std::min(plot.x(line.data.points.front().day), plot.area.right() - size.width());
    const std::vector<qreal> own = heightsBetween(plot, line.data, left, left + size.width());
    if (own.empty() || left < plot.area.left())
        return;
    const auto [highest, lowest] = std::ranges::minmax(own);
    const QRectF below({left, lowest + beginningDistance}, size);
    const QRectF above({left, highest - beginningDistance - size.height()}, size);
    std::optional<std::pair<size_t, QRectF>> best;
    for (const QRectF &rect : {below, above}) {
        const bool isTaken =
            std::ranges::any_of(chart.beginnings, [&](const RankChartLabel &label) {
                return label.rect.intersects(rect);
            });
        if (isTaken || !plot.area.contains(rect))
            continue;
        size_t inTheWay = 0;
        for (const ComparedLine *other : compared.shownLines()) {
            inTheWay += size_t(std::ranges::count_if(
                heightsBetween(plot, other->data, rect.left(), rect.right()),
                [&](qreal y) { return y > rect.top() && y < rect.bottom(); }));
        }
        if (!best || inTheWay < best->first)
            best = {inTheWay, rect};
    }
    if (best)
        chart.beginnings.push_back({best->second, text});
}

void layoutLines(RankChartGeometry &chart, const ComparedChart &compared,
                 const QFontMetricsF &metrics, const QLocale &locale)
{
    const bool isCompared = compared.isCompared();
    size_t place = 0;
    if (compared.own.isOn)
        chart.line = isCompared ? comparedRankLine(chart.plot, compared.own.data, place)
                                : rankLine(chart.plot, compared.own.data);
    for (const ComparedLine &rival : compared.rivals) {
        if (!rival.isOn)
            continue;
        chart.rivals.push_back(
            {rival.key, rival.look, comparedRankLine(chart.plot, rival.data, ++place)});
        layoutBeginning(chart, compared, rival, metrics, locale);
    }
}

} // namespace

RankChartGeometry layoutRankChart(const QRectF &rect, const QFontMetricsF &metrics,
                                  const ComparedChart &compared, const QLocale &locale)
{
    const QRectF inside = rect.marginsRemoved(ringMargins);
    const qreal height = metrics.height();
    const std::vector<DayMark> marks = compared.shownMarks();
    const qreal rowHeight = marks.empty() ? 0 : markRowHeight(metrics);
    // Rank 1 may stand at the upper edge of the plot.
    QRectF area = inside.adjusted(0, height / 2, 0, -height - labelDistance);
    if (rowHeight > 0)
        area.setBottom(area.bottom() - rowHeight - markDistance);
    const auto most = std::int64_t(area.height() / (height * rankPitch));
    const RankAxis axis = rankAxis(compared.worstRank(), most);
    qreal widest = 0;
    for (const std::int64_t rank : axis.ticks)
        widest = std::max(widest, metrics.horizontalAdvance(QString::number(rank)));
    area.setLeft(std::ceil(area.left() + widest + labelDistance));

    const size_t days = compared.days().size();
    RankChartGeometry chart{rect, {area, days, axis.bottom}, {}, {}, {}, {}, {}, {}, {}};
    layoutRanks(chart, axis, metrics);
    const DayLabelRoom room{inside.left(), inside.right(), height * dayGap};
    for (const DayLabel &label : dayLabels(compared.days(), chart.plot, room, metrics, locale))
        chart.days.push_back(
            {QRectF(label.left, inside.bottom() - height, label.width, height), label.text});
    layoutLines(chart, compared, metrics, locale);
    const QRectF row(inside.left(), area.bottom() + markDistance, inside.width(), rowHeight);
    if (rowHeight > 0)
        chart.marks = placedMarks(marks, compared.days(), chart.plot, row, metrics);
    return chart;
}

void paintRankChart(QPainter &painter, const RankChartGeometry &chart, const QFont &labels,
                    const Tokens &tokens)
{
    paintChartGround(painter, chart, tokens);
    paintChartLines(painter, chart, tokens);
    paintChartTexts(painter, chart, labels, tokens);
}

void paintChartGround(QPainter &painter, const RankChartGeometry &chart, const Tokens &tokens)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF &area = chart.plot.area;
    for (const qreal y : chart.grid)
        drawHorizontalHairline(painter, area.left(), area.right(), std::round(y),
                               tokens[Token::Hairline]);
    QColor dayLine = tokens[Token::Secondary];
    dayLine.setAlphaF(float(dayLineStrength));
    painter.setPen(QPen(dayLine, 1));
    for (const PlacedMark &mark : chart.marks) {
        for (const qreal day : mark.days) {
            const qreal x = std::floor(day) + 0.5;
            painter.drawLine(QPointF(x, area.top()), QPointF(x, mark.rect.top()));
        }
    }
    painter.restore();
}

void paintChartLines(QPainter &painter, const RankChartGeometry &chart, const Tokens &tokens,
                     std::optional<std::int64_t> emphasized)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const auto ink = [&](std::int64_t key, const LineLook &look) {
        return inkOf(look, emphasized && *emphasized != key, tokens);
    };
    for (auto rival = chart.rivals.rbegin(); rival != chart.rivals.rend(); ++rival)
        paintLine(painter, rival->line, rival->look, ink(rival->key, rival->look));
    paintLine(painter, chart.line, ownLook(), ink(ownLine, ownLook()));
    paintCrosses(painter, chart.line, ink(ownLine, ownLook()));
    painter.restore();
}

void paintChartTexts(QPainter &painter, const RankChartGeometry &chart, const QFont &labels,
                     const Tokens &tokens)
{
    painter.save();
    QColor veil = tokens[Token::Raised];
    veil.setAlphaF(float(veilStrength));
    // Lines may cross words that stand among them.
    for (const RankChartLabel &label : chart.beginnings)
        painter.fillRect(label.rect, veil);
    painter.setFont(labels);
    painter.setPen(tokens[Token::Secondary]);
    for (const auto *texts : {&chart.ranks, &chart.days, &chart.beginnings}) {
        for (const RankChartLabel &label : *texts)
            painter.drawText(label.rect,
                             int(Qt::AlignCenter | Qt::TextSingleLine) | int(Qt::TextDontClip),
                             label.text);
    }
    painter.restore();
}

void paintChosenDays(QPainter &painter, const RankChartGeometry &chart, qreal from, qreal to,
                     const Tokens &tokens)
{
    const RankPlot &plot = chart.plot;
    const auto one = plot.dayAt(std::min(from, to));
    const auto other = plot.dayAt(std::max(from, to));
    if (!one || !other)
        return;
    const qreal half = plot.column() / 2;
    QRectF band = plot.area;
    band.setLeft(plot.x(*one) - half);
    band.setRight(plot.x(*other) + half);
    drawRoundedRect(painter, band, radius::control, tokens.tint(Token::Accent),
                    tokens[Token::Accent]);
}

void paintInspectedDay(QPainter &painter, const RankChartGeometry &chart,
                       const ComparedChart &compared, size_t day, const Tokens &tokens)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const RankPlot &plot = chart.plot;
    // In the middle of a pixel, so that the dashes are crisp.
    const qreal x = std::floor(plot.x(day)) + 0.5;
    QPen crosshair(tokens[Token::Secondary], crosshairWidth);
    crosshair.setDashPattern({3, 3});
    painter.setPen(crosshair);
    painter.drawLine(QPointF(x, plot.area.top()), QPointF(x, plot.area.bottom()));
    const std::vector<const ComparedLine *> lines = compared.shownLines();
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        const RankChartData &data = (*line)->data;
        if (!data.pointOf(day))
            continue;
        const qreal side = chart.rivals.empty() ? chart.line.pointSide : comparedMarkSide;
        const QColor color = tokens[(*line)->look.token];
        paintMark(painter, (*line)->look, plot.markOf(data, day), side + 2, color, color, 1);
    }
    painter.restore();
}

} // namespace veltrix
