// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/ranking_history_content.h"

#include "ui/history/compare_section.h"
#include "ui/history/compared_text.h"
#include "ui/history/mark_row_view.h"
#include "ui/history/range_control.h"
#include "ui/history/rank_chart.h"
#include "ui/history/rank_movement_label.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/badge.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/position_badge.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStackedWidget>

namespace veltrix
{

namespace
{

constexpr qreal pictureScale = 2;
/// As wide as what opens there, so that it opens in the middle.
constexpr int anchorWidth = 340;
const QString chartSymbol = QStringLiteral("chart.xyaxis.line");

} // namespace

RankingHistoryContent::RankingHistoryContent(QWidget *parent)
    : QWidget(parent), m_panel(new QWidget),
      m_rangeTitle(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_latestCaption(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_latest(new TextLabel(TextStyle::Figure, TextLabel::Tone::Text)),
      m_movement(new RankMovementLabel), m_sample(new BadgeView),
      m_sampleNote(new TextLabel(
          TextStyle::Secondary, TextLabel::Tone::Secondary,
          tr("Sample data is for preview only. It does not change saved research or represent real "
             "App Store rankings."))),
      m_range(new RangeControl),
      m_zoomHint(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary,
                                 tr("Drag or Ctrl+wheel narrows the days"))),
      m_wholeRange(new Button(Button::Kind::Link, tr("Show all days"))),
      m_addNote(new Button(Button::Kind::Standard, QStringLiteral("flag"), tr("Add note"))),
      m_stack(new QStackedWidget), m_chart(new RankChart), m_marks(nullptr), m_anchor(nullptr),
      m_empty(new EmptyState(QStringLiteral("historyEmpty"))),
      m_legendDay(new ElidedLabel(TextStyle::SecondaryMedium, TextLabel::Tone::Text)),
      m_inspection(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_axisNote(
          new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary,
                        tr("Lower rank is better") + QStringLiteral(" · ") + tr("Day (UTC)"))),
      m_section(new CompareSection),
      m_markNote(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary,
                               tr("A red × marks a check that did not find the app: not ranked."))),
      m_incomplete(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Red))
{
    setObjectName(QStringLiteral("historyContent"));
    build();
    connect(m_range, &RangeControl::rangeChanged, this, [this] {
        m_chart->showWholeRange();
        updateHeadings();
        updateChart();
    });
    // Also for the range that is chosen already: it is the way back to all of its days.
    for (const QAbstractButton *choice : m_range->findChildren<QAbstractButton *>())
        connect(choice, &QAbstractButton::clicked, m_chart, &RankChart::showWholeRange);
    connect(m_wholeRange, &Button::clicked, this, [this] {
        // The button goes, and with it the focus.
        m_chart->setFocus(Qt::OtherFocusReason);
        m_chart->showWholeRange();
    });
    connect(m_chart, &RankChart::shownDaysChanged, this, &RankingHistoryContent::updateShownDays);
    connect(m_chart, &RankChart::selectedDayChanged, this,
            &RankingHistoryContent::updateInspection);
    connect(m_chart, &RankChart::marksMoved, this, &RankingHistoryContent::placeMarks);
    connect(m_section, &CompareSection::turned, this, &RankingHistoryContent::turnLine);
    connect(m_section, &CompareSection::pointedAt, m_chart, &RankChart::emphasize);
    connectNotes();
}

void RankingHistoryContent::connectNotes()
{
    connect(m_addNote, &Button::clicked, this, [this] {
        const auto &days = compared().days();
        if (days.empty())
            return;
        const Date day = m_chart->selectedDay() ? days[*m_chart->selectedDay()].date : m_state.now;
        const std::int64_t noted = std::min(utcDay(day), utcDay(m_state.now));
        Q_EMIT noteRequested(noted, anchorAt(noted));
    });
    connect(m_chart, &RankChart::noteRequested, this, [this](size_t day) {
        const std::int64_t noted = utcDay(compared().days()[day].date);
        Q_EMIT noteRequested(noted, anchorAt(noted));
    });
    connect(m_marks, &MarkRowView::dayPressed, this, [this](std::int64_t day) {
        const auto &days = compared().days();
        m_chart->setSelectedDay(size_t(day - utcDay(days.front().date)));
    });
    connect(m_marks, &MarkRowView::notePressed, this, [this](QUuid id) {
        const auto note = std::ranges::find(m_state.comparison.notes, id, &AppNote::id);
        if (note != m_state.comparison.notes.end())
            Q_EMIT notePressed(id, anchorAt(note->day));
    });
}

QWidget *RankingHistoryContent::anchorAt(std::int64_t day)
{
    const auto &days = compared().days();
    const RankPlot &plot = m_chart->plot();
    qreal x = plot.area.right();
    if (!days.empty() && day >= utcDay(days.front().date) && day <= utcDay(days.back().date))
        x = plot.x(size_t(day - utcDay(days.front().date)));
    const int width = scaledToFont(anchorWidth, font());
    const QPoint bottom = m_chart->pos() + QPointF(x, plot.area.bottom()).toPoint();
    m_anchor->setGeometry(bottom.x() - width / 2, bottom.y(), width, m_marks->height());
    return m_anchor;
}

void RankingHistoryContent::placeMarks()
{
    m_marks->show(m_chart->marks(), m_chart->pos(), compared().days());
}

void RankingHistoryContent::choose(std::int64_t trackId)
{
    m_choice.turn(trackId, true);
}

void RankingHistoryContent::turnLine(std::int64_t line, bool on)
{
    m_choice.turn(line, on);
    if (!on)
        m_chart->emphasize(std::nullopt);
    updateChart();
}

void RankingHistoryContent::build()
{
    m_rangeTitle->setObjectName(QStringLiteral("historyRangeTitle"));
    m_latestCaption->setObjectName(QStringLiteral("historyLatestCaption"));
    m_zoomHint->setObjectName(QStringLiteral("historyZoomHint"));
    nameControl(m_wholeRange, QStringLiteral("historyWholeRange"),
                tr("Show all days of the range"));
    nameControl(m_addNote, QStringLiteral("historyAddNote"), tr("Add note"));
    m_addNote->setToolTip(tr("Write a note on the inspected day, or on today (N)"));
    m_markNote->setObjectName(QStringLiteral("historyMarkNote"));
    m_markNote->setWrapping(TextLabel::Wrapping::Wrapped);
    m_incomplete->setObjectName(QStringLiteral("historyIncomplete"));
    m_incomplete->setWrapping(TextLabel::Wrapping::Wrapped);
    m_latest->setObjectName(QStringLiteral("historyLatest"));
    m_inspection->setObjectName(QStringLiteral("historyInspection"));
    m_legendDay->setObjectName(QStringLiteral("historyLegendDay"));
    m_sample->setBadge({tr("SAMPLE"), Token::Orange});
    m_sample->setObjectName(QStringLiteral("historySample"));
    m_sampleNote->setObjectName(QStringLiteral("historySampleNote"));
    m_sampleNote->setWrapping(TextLabel::Wrapping::Wrapped);

    auto *heading = new QHBoxLayout;
    heading->setSpacing(spacing::s);
    heading->addWidget(
        new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, tr("Ranking trend")));
    heading->addWidget(m_sample);
    heading->addStretch(1);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(1);
    titles->addStretch(1);
    titles->addLayout(heading);
    titles->addWidget(m_rangeTitle);
    auto *latestLine = new QHBoxLayout;
    latestLine->setSpacing(spacing::m);
    latestLine->addStretch(1);
    latestLine->addWidget(m_latest, 0, Qt::AlignBaseline);
    latestLine->addWidget(m_movement, 0, Qt::AlignBaseline);
    m_latestCaption->setAlignment(Qt::AlignRight);
    auto *latest = new QVBoxLayout;
    latest->setSpacing(1);
    latest->addWidget(m_latestCaption);
    latest->addLayout(latestLine);
    auto *top = new QHBoxLayout;
    top->addLayout(titles, 1);
    top->addLayout(latest);

    auto *below = new QHBoxLayout;
    below->setSpacing(spacing::m);
    below->addWidget(m_legendDay);
    below->addWidget(m_inspection, 1);
    below->addWidget(m_axisNote);
    auto *note = new TextLabel(
        TextStyle::Secondary, TextLabel::Tone::Secondary,
        tr("The line connects saved ranked checks; an explicit unranked check breaks it. Missing "
           "days are not inferred. Ranks reflect returned App Store results, not verified device "
           "positions."));
    note->setWrapping(TextLabel::Wrapping::Wrapped);

    auto *rankTitle = new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary, tr("Rank"));
    auto *chartPage = new QWidget;
    auto *chart = new QVBoxLayout(chartPage);
    chart->setContentsMargins(0, 0, 0, 0);
    chart->setSpacing(0);
    chart->addWidget(rankTitle);
    chart->addWidget(m_chart, 1);
    m_anchor = new QWidget(chartPage);
    m_anchor->hide();
    m_marks = new MarkRowView(chartPage);
    m_stack->addWidget(chartPage);
    m_stack->addWidget(m_empty);

    auto *panel = new QVBoxLayout(m_panel);
    panel->setContentsMargins(0, 0, 0, 0);
    panel->setSpacing(spacing::m);
    panel->addLayout(top);
    panel->addWidget(m_incomplete);
    auto *range = new QHBoxLayout;
    range->setSpacing(spacing::m);
    range->addWidget(m_range);
    range->addStretch(1);
    range->addWidget(m_zoomHint);
    range->addWidget(m_wholeRange);
    range->addWidget(m_addNote);
    panel->addLayout(range);
    panel->addWidget(m_stack, 1);
    panel->addLayout(below);
    panel->addWidget(m_section);
    panel->addWidget(m_markNote);
    panel->addWidget(m_sampleNote);
    panel->addWidget(note);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_panel);
}

const ComparedChart &RankingHistoryContent::compared() const
{
    return m_chart->compared();
}

HistoryRange RankingHistoryContent::range() const
{
    return m_range->range();
}

bool RankingHistoryContent::hasChart() const
{
    return m_stack->currentIndex() == 0;
}

void RankingHistoryContent::setState(const State &state)
{
    m_state = state;
    updateHeadings();
    updateChart();
}

void RankingHistoryContent::updateHeadings()
{
    m_sample->setVisible(m_state.isSample);
    m_sampleNote->setVisible(m_state.isSample);
    const auto &checks = m_state.timeline.observations;
    m_incomplete->setVisible(m_state.missing.has_value());
    m_incomplete->setText(
        tr("Older measurements couldn’t be read, so only the newest days are shown. %1")
            .arg(m_state.missing.value_or(QString())));
    m_incomplete->setAccessibleName(m_incomplete->text());
    m_latestCaption->setText(checks.empty()
                                 ? tr("Latest saved check")
                                 : tr("Latest saved check · %1")
                                       .arg(dayText(checks.back().date, DayFormat::DayAndYear)));
    if (checks.empty()) {
        m_latest->setText(tr("Not checked yet"));
        m_latest->setAccessibleName(m_latest->text());
        m_movement->setMovement(std::nullopt);
        return;
    }
    const PositionBadge badge{checks.back().position};
    m_latest->setText(badge.text());
    m_latest->setAccessibleName(badge.accessibleText());
    m_movement->setMovement(m_state.timeline.latestMovement());
}

void RankingHistoryContent::updateChart()
{
    ComparedChart charted = comparedChart(m_state.timeline, m_state.comparison, m_range->range(),
                                          m_state.now, m_choice);
    // Narrowed to days without a rank, the chart stays: it is the way back. So it does without
    // lines, which the user has turned off.
    const bool isRanked = !charted.isEmpty() || charted.shownLines().empty();
    m_chart->setData(std::move(charted));
    const bool hasChecks = !m_state.timeline.observations.empty();
    if (m_state.error)
        showEmpty(QStringLiteral("exclamationmark.triangle"), *m_state.error, QString());
    else if (!hasChecks)
        showEmpty(chartSymbol, tr("No keyword data yet"), QString());
    else if (!isRanked)
        showEmpty(chartSymbol, tr("No ranked checks in this range"),
                  tr("No saved rank is available for the selected period."));
    else
        m_stack->setCurrentIndex(0);
    m_section->setProblem(m_state.comparison.problem.value_or(QString()));
    m_section->setVisible(!m_state.error && hasChecks);
    updateShownDays();
    updateInspection();
    placeMarks();
    Q_EMIT stateChanged();
}

void RankingHistoryContent::updateShownDays()
{
    const bool isNarrowed = m_chart->isNarrowed();
    QString title = rangeTitle(m_range->range());
    if (isNarrowed)
        title = spanText(compared().days());
    if (isNarrowed && compared().isEmpty())
        title = tr("%1 · No ranked checks in this range").arg(title);
    const bool isOther = title != m_rangeTitle->text();
    m_rangeTitle->setText(title);
    m_rangeTitle->setAccessibleName(title);
    if (isOther && m_chart->hasFocus())
        announceNameChange(m_rangeTitle);
    m_markNote->setVisible(hasChart() && compared().own.isOn &&
                           !compared().own.data.unranked.empty());
    setControlsShown(true);
}

void RankingHistoryContent::setControlsShown(bool shown)
{
    const bool isNarrowed = m_chart->isNarrowed();
    const bool canNarrow = compared().days().size() > fewestShownDays;
    m_range->setVisible(shown);
    m_zoomHint->setVisible(shown && hasChart() && canNarrow && !isNarrowed);
    m_wholeRange->setVisible(shown && hasChart() && isNarrowed);
    m_addNote->setVisible(shown && hasChart());
    m_section->setControlsShown(shown);
}

void RankingHistoryContent::showEmpty(const QString &symbol, const QString &title,
                                      const QString &text)
{
    m_empty->setContent({symbol, title, text, QString()});
    m_stack->setCurrentWidget(m_empty);
}

void RankingHistoryContent::updateInspection()
{
    m_inspection->setVisible(hasChart());
    m_axisNote->setVisible(hasChart());
    m_inspection->setText(comparedInspection(compared(), m_chart->selectedDay()));
    m_inspection->setAccessibleName(spokenDay(compared(), m_chart->selectedDay()));
    m_section->setChart(compared(), m_chart->selectedDay());
    m_legendDay->setText(legendCaption(compared(), m_chart->selectedDay()));
    m_legendDay->setVisible(hasChart() && !compared().rivals.empty());
    if (m_chart->selectedDay())
        announceNameChange(m_inspection);
}

QImage RankingHistoryContent::picture(const QString &heading)
{
    const Tokens tokens = Tokens::of(this);
    const QFont headingFont = fontFor(TextStyle::Title, font());
    const int headingHeight = QFontMetrics(headingFont).height() + spacing::l;
    const QSize size(m_panel->width() + 2 * spacing::xl,
                     headingHeight + m_panel->height() + 2 * spacing::xl);
    QImage image((QSizeF(size) * pictureScale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pictureScale);
    image.fill(tokens[Token::Raised]);
    QPainter painter(&image);
    painter.setFont(headingFont);
    painter.setPen(tokens[Token::Text]);
    painter.drawText(
        QRect(spacing::xl, spacing::xl, m_panel->width(), headingHeight),
        Qt::AlignLeft | Qt::AlignTop,
        QFontMetrics(headingFont).elidedText(heading, Qt::ElideRight, m_panel->width()));
    // The controls would mean nothing in a picture, and neither would what is inspected just now.
    const auto inspected = m_chart->selectedDay();
    m_chart->setSelectedDay(std::nullopt);
    m_inspection->hide();
    setControlsShown(false);
    m_panel->layout()->activate();
    m_panel->render(&painter, QPoint(spacing::xl, spacing::xl + headingHeight), QRegion(),
                    QWidget::DrawChildren);
    setControlsShown(true);
    m_chart->setSelectedDay(inspected);
    updateInspection();
    m_panel->layout()->activate();
    return image;
}

} // namespace veltrix
