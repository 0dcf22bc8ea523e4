// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking history of one keyword: chart, latest check, range, inspection.
#pragma once

#include "ui/history/rank_history.h"

#include <QImage>
#include <QWidget>

class QStackedWidget;

namespace veltrix
{

class BadgeView;
class Button;
class EmptyState;
class RangeControl;
class RankChart;
class RankMovementLabel;
class TextLabel;

/// Shows a timeline. Everything comes as a value, so previews can show sample data.
class RankingHistoryContent final : public QWidget
{
    Q_OBJECT

public:
    struct State {
        RankingTimeline timeline;
        /// Stands in the chart's place.
        std::optional<QString> error;
        /// For previews: says that the data are not real.
        bool isSample = false;
        /// The present moment: the last day of the chart.
        Date now;
        /// Why measurements older than these could not be read; stands above the chart.
        std::optional<QString> missing = std::nullopt;
    };

    explicit RankingHistoryContent(QWidget *parent = nullptr);

    void setState(const State &state);

    /// What is charted now: the range, or the days that it is narrowed to.
    [[nodiscard]] const RankChartData &data() const;
    [[nodiscard]] HistoryRange range() const;
    /// There is a chart to copy or export.
    [[nodiscard]] bool hasChart() const;
    /// The chart with its headings, at twice the size on screen, under a line that says whose it
    /// is.
    [[nodiscard]] QImage picture(const QString &heading);

Q_SIGNALS:
    void stateChanged();

private:
    void build();
    void updateHeadings();
    void updateChart();
    void showEmpty(const QString &symbol, const QString &title, const QString &text);
    void updateInspection();
    void updateShownDays();
    /// What only helps to use the chart, not to read it.
    void setControlsShown(bool shown);

    State m_state;
    QWidget *m_panel;
    TextLabel *m_rangeTitle;
    TextLabel *m_latestCaption;
    TextLabel *m_latest;
    RankMovementLabel *m_movement;
    BadgeView *m_sample;
    TextLabel *m_sampleNote;
    RangeControl *m_range;
    TextLabel *m_zoomHint;
    Button *m_wholeRange;
    QStackedWidget *m_stack;
    RankChart *m_chart;
    EmptyState *m_empty;
    TextLabel *m_inspection;
    TextLabel *m_axisNote;
    TextLabel *m_markNote;
    TextLabel *m_incomplete;
};

} // namespace veltrix
