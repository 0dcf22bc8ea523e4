// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/mark_row.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

struct RowTexts {
    Q_DECLARE_TR_FUNCTIONS(MarkRow)
};

/// Above and below the text, before and behind it, between symbol and text, and between two marks.
constexpr qreal edgeY = 3;
constexpr qreal edgeX = 8;
constexpr qreal symbolGap = 6;
constexpr qreal markGap = 4;
/// Of the text, in average characters: a sentence would push all others aside.
constexpr qreal longestText = 24;

qreal symbolSide(qreal rowHeight)
{
    return std::round(rowHeight * 0.6);
}

/// A rectangle of that width, as much in the middle of the days as the row allows.
QRectF placed(const PlacedMark &mark, const QRectF &row, qreal width)
{
    const qreal middle = (mark.days.front() + mark.days.back()) / 2;
    const qreal left =
        std::clamp(middle - width / 2, row.left(), std::max(row.left(), row.right() - width));
    return {std::round(left), row.top(), width, row.height()};
}

QString textOf(const PlacedMark &mark, const QFontMetricsF &metrics)
{
    QString text = mark.marks.front().label;
    if (mark.marks.size() > 1)
        text = RowTexts::tr("%1 +%2").arg(text, QString::number(mark.marks.size() - 1));
    return metrics.elidedText(text, Qt::ElideRight, longestText * metrics.averageCharWidth());
}

bool isTouched(const QRectF &before, const QRectF &after)
{
    return after.left() < before.right() + markGap;
}

/// Marks that stand apart as symbols.
std::vector<PlacedMark> clusters(std::vector<PlacedMark> byDay, const QRectF &row)
{
    std::vector<PlacedMark> apart;
    for (PlacedMark &mark : byDay) {
        mark.rect = placed(mark, row, row.height());
        while (!apart.empty() && isTouched(apart.back().rect, mark.rect)) {
            PlacedMark &before = apart.back();
            before.days.insert(before.days.end(), mark.days.begin(), mark.days.end());
            before.marks.insert(before.marks.end(), mark.marks.begin(), mark.marks.end());
            mark = std::move(before);
            apart.pop_back();
            mark.rect = placed(mark, row, row.height());
        }
        apart.push_back(std::move(mark));
    }
    return apart;
}

} // namespace

QRectF PlacedMark::symbolRect() const
{
    const qreal side = symbolSide(rect.height());
    const qreal left = text.isEmpty() ? rect.center().x() - side / 2 : rect.left() + edgeX;
    return {left, rect.center().y() - side / 2, side, side};
}

QRectF PlacedMark::textRect() const
{
    return text.isEmpty()
               ? QRectF()
               : rect.adjusted(edgeX + symbolSide(rect.height()) + symbolGap, 0, -edgeX, 0);
}

qreal markRowHeight(const QFontMetricsF &metrics)
{
    return std::ceil(metrics.height()) + 2 * edgeY;
}

std::vector<PlacedMark> placedMarks(const std::vector<DayMark> &marks,
                                    const std::vector<RankingTimeline::Day> &days,
                                    const RankPlot &plot, const QRectF &row,
                                    const QFontMetricsF &metrics)
{
    if (days.empty())
        return {};
    const std::int64_t firstDay = utcDay(days.front().date);
    std::vector<PlacedMark> byDay;
    for (const DayMark &mark : marks) {
        if (byDay.empty() || byDay.back().marks.front().day != mark.day)
            byDay.push_back({{}, {}, {}, {plot.x(size_t(mark.day - firstDay))}, {}});
        byDay.back().marks.push_back(mark);
    }
    std::vector<PlacedMark> apart = clusters(std::move(byDay), row);
    std::vector<QRectF> whole;
    for (PlacedMark &mark : apart) {
        const auto note = std::ranges::find_if(mark.marks, &DayMark::isNote);
        mark.symbol = (note == mark.marks.end() ? mark.marks.front() : *note).symbol();
        const qreal width = std::ceil(metrics.horizontalAdvance(textOf(mark, metrics))) +
                            symbolSide(row.height()) + symbolGap + 2 * edgeX;
        whole.push_back(placed(mark, row, width));
    }
    for (size_t i = 0; i < apart.size(); ++i) {
        const bool hasRoom = apart[i].days.size() == 1 && whole[i].width() <= row.width() &&
                             (i == 0 || !isTouched(whole[i - 1], whole[i])) &&
                             (i + 1 == apart.size() || !isTouched(whole[i], whole[i + 1]));
        if (!hasRoom)
            continue;
        apart[i].text = textOf(apart[i], metrics);
        apart[i].rect = whole[i];
    }
    return apart;
}

} // namespace veltrix
