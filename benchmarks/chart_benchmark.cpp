// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking chart at ten years: what switching it to all saved checks and a step of the pointer
// cost, beside the same with a month; and with ten lines of a year beside one. Offscreen, so the
// figures are the program's own and not a display's.
#include "own_process.h"
#include "ratio.h"
#include "ui/history/range_control.h"
#include "ui/history/rank_chart.h"
#include "ui/history/ranking_history_content.h"
#include "ui_kit/theme/theme_controller.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <algorithm>

namespace
{

using namespace veltrix;

constexpr int rounds = 41;
/// What a user takes for at once, and what a step may take to be seen without a visible delay, in
/// seconds.
constexpr double atOnce = 0.050;
constexpr double frame = 0.016;

class LightScheme final : public ColorSchemeSource
{
public:
    [[nodiscard]] ColorScheme colorScheme() const override { return ColorScheme::Light; }
};

/// A check a day up to today, with days left out and checks that found nothing.
RankingTimeline generatedTimeline(std::int64_t days, Date now)
{
    std::vector<RankingTimeline::Observation> checks;
    std::int64_t rank = 60;
    for (std::int64_t ago = days - 1; ago >= 0; --ago) {
        rank = std::clamp<std::int64_t>(rank + (ago * 7919 + ago / 3) % 11 - 5, 1, 180);
        if (ago % 29 == 17)
            continue;
        const auto position = ago % 41 == 23 ? std::nullopt : std::optional(rank);
        checks.push_back(
            {QUuid::createUuid(), now - Seconds(secondsPerDay * double(ago)), position});
    }
    return {std::move(checks), now};
}

/// So many competitors that were looked for in every check.
Comparison generatedComparison(const RankingTimeline &timeline, int rivals)
{
    Comparison comparison;
    comparison.appName = QStringLiteral("Lumen Photo Editor");
    for (int i = 0; i < rivals; ++i) {
        TrackedCompetitor competitor;
        competitor.id = QUuid::createUuid();
        competitor.trackId = 1'000 + i;
        competitor.name = QStringLiteral("Competitor %1").arg(i);
        comparison.competitors.append(competitor);
    }
    for (const RankingTimeline::Observation &check : timeline.observations) {
        KeywordStandings measured;
        measured.fetchedAt = check.date;
        const std::int64_t day = utcDay(check.date);
        for (int i = 0; i < rivals; ++i) {
            const std::int64_t rank = 1 + (i * 17 + (day * 7919 + day / 3) % 11) % 90;
            measured.rivals.push_back({comparison.competitors[i].id,
                                       (day + i) % 37 == 0 ? std::nullopt : std::optional(rank)});
        }
        comparison.standings.push_back(measured);
    }
    return comparison;
}

/// The history of so many days, as its sheet shows it, beside so many competitors.
class History
{
public:
    explicit History(std::int64_t days, int rivals = 0) : m_days(size_t(days))
    {
        const Date now = dateFromUnixSeconds(1'795'262'400);
        const RankingTimeline timeline = generatedTimeline(days, now);
        const Comparison comparison = generatedComparison(timeline, rivals);
        for (const TrackedCompetitor &competitor : comparison.competitors)
            m_content.choose(competitor.trackId);
        m_content.setState({timeline, std::nullopt, false, now, std::nullopt, comparison});
        m_content.resize(720, 520);
        m_content.show();
        QCoreApplication::processEvents();
        m_picture = QImage(m_content.size(), QImage::Format_RGB32);
        show(HistoryRange::Days14);
    }

    void show(HistoryRange range)
    {
        m_content.findChild<RangeControl *>()->setRange(range);
        paint(m_content);
    }
    void showAll()
    {
        show(HistoryRange::All);
        require(m_content.compared().days().size() == m_days, "all days are charted");
    }
    /// As a pointer does that moves by a pixel.
    void hover()
    {
        step();
        paint(*m_content.findChild<RankChart *>());
    }
    /// The same with all that tells of the day: the legend, and the line below the chart.
    void hoverAndTell()
    {
        step();
        paint(m_content);
    }
    void requireLines(size_t lines)
    {
        const auto shown = m_content.compared().shownLines();
        require(shown.size() == lines, "all lines are charted");
        for (const ComparedLine *line : shown)
            require(line->data.points.size() > m_days / 2, "with their ranks");
    }

    /// As a notch of the wheel with Ctrl does, and back.
    void narrow()
    {
        RankChart &chart = *m_content.findChild<RankChart *>();
        const size_t total = chart.data().days.size();
        chart.showDays(zoomed(chart.shownDays(), 0.8, total / 2, total));
        paint(m_content);
        require(chart.isNarrowed(), "fewer days are charted");
        chart.showWholeRange();
        paint(m_content);
    }

private:
    void step()
    {
        RankChart &chart = *m_content.findChild<RankChart *>();
        const QRectF area = chart.plot().area;
        m_pointer = m_pointer < area.right() - 1 ? m_pointer + 1 : area.left();
        chart.setSelectedDay(chart.plot().dayAt(m_pointer));
    }
    void paint(QWidget &widget)
    {
        QPainter painter(&m_picture);
        widget.render(&painter);
    }

    size_t m_days;
    RankingHistoryContent m_content;
    QImage m_picture;
    qreal m_pointer = 0;
};

void reportStep(const char *what, const char *beside, const Spread &once, double most,
                const Ratio &ratio)
{
    report(what, sharesOf(once, most), atMost(1),
           inWords(once.median, Unit::Time) + " of " + inWords(most, Unit::Time));
    reportDetail(beside, ratio);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
    const QApplication application(argc, argv);
    LightScheme scheme;
    const ThemeController theme(scheme);
    History years(3650);
    History month(30);

    const auto back = [&] {
        years.show(HistoryRange::Days14);
        month.show(HistoryRange::Days14);
    };
    std::vector<double> switches;
    for (int i = 0; i < rounds; ++i) {
        back();
        switches.push_back(secondsOf([&] { years.showAll(); }));
    }
    reportStep("switching a chart of 3,650 days to All, times 50 ms", "the same beside 30 days",
               spreadOf(switches), atOnce,
               timesAsLong([&] { years.showAll(); }, [&] { month.showAll(); }, rounds, back));

    years.showAll();
    month.showAll();
    reportStep("a step of the pointer over 3,650 days, frames of 16 ms", "the same beside 30 days",
               seconds([&] { years.hover(); }, rounds), frame,
               timesAsLong([&] { years.hover(); }, [&] { month.hover(); }, rounds));

    reportStep("narrowing 3,650 days by a notch and back, times 50 ms", "the same beside 30 days",
               seconds([&] { years.narrow(); }, rounds), atOnce,
               timesAsLong([&] { years.narrow(); }, [&] { month.narrow(); }, rounds));

    History ten(365, 9);
    History one(365);
    ten.showAll();
    one.showAll();
    ten.requireLines(10);
    one.requireLines(1);
    reportStep("a step of the pointer over ten lines of 365 days, frames of 16 ms",
               "the same beside one line", seconds([&] { ten.hoverAndTell(); }, rounds), frame,
               timesAsLong([&] { ten.hoverAndTell(); }, [&] { one.hoverAndTell(); }, rounds));
    return 0;
}
