// SPDX-License-Identifier: GPL-3.0-or-later
// The ranking chart at ten years: what switching it to all saved checks and a step of the pointer
// cost, beside the same with a month. Offscreen, so the figures are the program's own and not a
// display's.
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

/// The history of so many days, as its sheet shows it.
class History
{
public:
    explicit History(std::int64_t days) : m_days(size_t(days))
    {
        const Date now = dateFromUnixSeconds(1'795'262'400);
        m_content.setState({generatedTimeline(days, now), std::nullopt, false, now});
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
        require(m_content.data().days.size() == m_days, "all days are charted");
    }
    /// As a pointer does that moves by a pixel.
    void hover()
    {
        RankChart &chart = *m_content.findChild<RankChart *>();
        const QRectF area = chart.plot().area;
        m_pointer = m_pointer < area.right() - 1 ? m_pointer + 1 : area.left();
        chart.setSelectedDay(chart.plot().dayAt(m_pointer));
        paint(chart);
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
                const Spread &ratio)
{
    report(what, {once.median / most, once.lowest / most, once.highest / most}, atMost(1));
    reportDetail("the same", inMilliseconds(once), "ms of processor");
    reportDetail(beside, ratio, "times");
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
    return 0;
}
