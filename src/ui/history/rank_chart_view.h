// SPDX-License-Identifier: GPL-3.0-or-later
// What Qt Charts draws for the ranking chart. Only rank_chart.cpp knows of it.
#pragma once

#include "ui/history/rank_chart.h"
#include "ui_kit/theme/tokens.h"

#include <QtCharts/QChartView>

class QCategoryAxis;

namespace veltrix
{

/// Axis labels, lines and hollow points by Qt Charts; under them the grid, which has no lines at
/// the edges of the plot; over them the marks of unranked checks, the crosshair and the inspected
/// point.
class RankChart::View final : public QChartView
{
public:
    explicit View(RankChart &owner);

    /// Draws the owner's data anew.
    void rebuild();
    /// Colours and fonts as they are now.
    void restyle();
    [[nodiscard]] RankPlot plot() const;
    /// Side of a plotted point: smaller where days are narrow.
    [[nodiscard]] qreal pointSize() const;

protected:
    void drawBackground(QPainter *painter, const QRectF &rect) override;
    void drawForeground(QPainter *painter, const QRectF &rect) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void addSeries();
    void labelDays();
    void drawUnranked(QPainter &painter, const Tokens &tokens) const;
    void drawSelection(QPainter &painter, const Tokens &tokens) const;

    RankChart &m_owner;
    QCategoryAxis *m_days;
    QCategoryAxis *m_ranks;
    int m_dayLabels = -1;
};

} // namespace veltrix
