// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking history of one keyword: chart, latest check, range, inspection.
#pragma once

#include "ui/history/compared_history.h"

#include <QImage>
#include <QWidget>

class QStackedWidget;

namespace veltrix
{

class BadgeView;
class Button;
class CompareSection;
class EmptyState;
class MarkRowView;
class RangeControl;
class RankChart;
class RankMovementLabel;
class TextLabel;

/// Shows a timeline, beside those of competitors. Everything comes as a value, so previews can show
/// sample data.
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
        Comparison comparison = {};
    };

    explicit RankingHistoryContent(QWidget *parent = nullptr);

    void setState(const State &state);
    /// Turns the line of a competitor on, by its App Store id, and leaves the choice of others to
    /// the user.
    void choose(std::int64_t trackId);

    /// What is charted now: the range, or the days that it is narrowed to.
    [[nodiscard]] const ComparedChart &compared() const;
    [[nodiscard]] HistoryRange range() const;
    /// There is a chart to copy or export.
    [[nodiscard]] bool hasChart() const;
    /// The chart with its headings, at twice the size on screen, under a line that says whose it
    /// is.
    [[nodiscard]] QImage picture(const QString &heading);

Q_SIGNALS:
    void stateChanged();
    /// The user wants to write a note on a UTC day; `anchor` is where that is done.
    void noteRequested(std::int64_t day, QWidget *anchor);
    /// The user wants to change a note.
    void notePressed(QUuid id, QWidget *anchor);

private:
    void build();
    void updateHeadings();
    void updateChart();
    void showEmpty(const QString &symbol, const QString &title, const QString &text);
    void updateInspection();
    void updateShownDays();
    /// What only helps to use the chart, not to read it.
    void setControlsShown(bool shown);
    void connectNotes();
    void turnLine(std::int64_t line, bool on);
    void placeMarks();
    /// Where what is done about a day is done: below it.
    QWidget *anchorAt(std::int64_t day);

    State m_state;
    LineChoice m_choice;
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
    Button *m_addNote;
    QStackedWidget *m_stack;
    RankChart *m_chart;
    MarkRowView *m_marks;
    QWidget *m_anchor;
    EmptyState *m_empty;
    /// Whose ranks the legend has.
    TextLabel *m_legendDay;
    TextLabel *m_inspection;
    TextLabel *m_axisNote;
    CompareSection *m_section;
    TextLabel *m_markNote;
    TextLabel *m_incomplete;
};

} // namespace veltrix
