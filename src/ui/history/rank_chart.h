// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking chart: days to the right, rank 1 at the top.
#pragma once

#include "ui/history/rank_chart_layout.h"

#include <QWidget>

namespace veltrix
{

/// Draws a history and lets one day of it be inspected, by pointer and by keys: Left and Right move
/// by a day, with Ctrl to the next saved check, Home and End go to the ends, Escape lets go.
class RankChart final : public QWidget
{
    Q_OBJECT

public:
    explicit RankChart(QWidget *parent = nullptr);

    /// Ends the inspection unless the day is still there.
    void setData(RankChartData data);
    [[nodiscard]] const RankChartData &data() const { return m_data; }

    /// The inspected day, an index into data().days.
    [[nodiscard]] std::optional<size_t> selectedDay() const { return m_selected; }
    void setSelectedDay(std::optional<size_t> day);

    /// Where days and ranks lie in the coordinates of this widget.
    [[nodiscard]] const RankPlot &plot() const { return geometryNow().plot; }
    /// Days that have a check, ranked or not, oldest first: what a screen reader walks through.
    [[nodiscard]] const std::vector<size_t> &checkedDays() const { return m_checked; }
    /// Where the mark of a checked day lies, in the coordinates of this widget.
    [[nodiscard]] QRectF markOf(size_t day) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void selectedDayChanged(std::optional<size_t> day);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// Laid out for the widget as it is now.
    [[nodiscard]] const RankChartGeometry &geometryNow() const;
    void inspect(const QPointF &position);
    void announceSelection();

    RankChartData m_data;
    std::vector<size_t> m_checked;
    std::optional<size_t> m_selected;
    /// Made when it is asked for; dropped when data or font change.
    mutable std::optional<RankChartGeometry> m_geometry;
};

} // namespace veltrix
