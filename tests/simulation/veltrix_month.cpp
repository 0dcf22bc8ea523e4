// SPDX-License-Identifier: GPL-3.0-or-later
// Prints how many days of a month each keyword is observed, for faults of several kinds:
// veltrix-month [number of seeds]. What a month of daily runs without a window measures and tells:
// veltrix-month --daily. What three months notice of listings that change: veltrix-month
// --compared.
#include "simulation/compared_months.h"
#include "simulation/daily_month.h"
#include "simulation/measuring_month.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>

namespace
{

using namespace veltrix;
using Hints = MonthOptions::Hints;
using Poison = MonthOptions::Poison;

struct Row {
    const char *what;
    Seconds searchTime;
    Hints hints;
    Poison poison;
};

constexpr Row rows[] = {
    {"answers at once", Seconds(0), Hints::None, Poison::None},
    {"4.5 s a search", Seconds(4.5), Hints::None, Poison::None},
    {"4.5 s a search, hints answer", Seconds(4.5), Hints::Answering, Poison::None},
    {"4.5 s a search, hints out of reach", Seconds(4.5), Hints::OutOfReach, Poison::None},
    {"at once, one keyword of 101 letters", Seconds(0), Hints::None, Poison::TooLong},
    {"at once, one storefront \"UK\"", Seconds(0), Hints::None, Poison::UnknownStorefront},
    {"at once, one keyword always fails", Seconds(0), Hints::None, Poison::AlwaysFails},
    {"4.5 s, one keyword of 101 letters", Seconds(4.5), Hints::None, Poison::TooLong},
    {"4.5 s, one storefront \"UK\"", Seconds(4.5), Hints::None, Poison::UnknownStorefront},
};

void printRow(const Row &row, double faults, int seeds)
{
    int fewest = 1'000'000;
    int fewestOfBestSeed = 0;
    double average = 0;
    int below = 0;
    int searches = 0;
    int errors = 0;
    for (int seed = 1; seed <= seeds; ++seed) {
        MonthOptions options;
        options.searchTime = row.searchTime;
        options.hints = row.hints;
        options.poison = row.poison;
        options.faults = faults;
        options.seed = std::uint32_t(seed);
        const MonthResult result = simulateMonth(options);
        fewest = std::min(fewest, result.fewestDays());
        fewestOfBestSeed = std::max(fewestOfBestSeed, result.fewestDays());
        average += result.averageDays() / seeds;
        below += result.keywordsBelow(30);
        searches += result.searches;
        errors += result.errorsShown;
    }
    std::printf("| %-36s | %3.0f %% | %2d to %2d | %5.1f | %7.1f | %8d | %6d |\n", row.what,
                faults * 100, fewest, fewestOfBestSeed, average, double(below) / seeds,
                searches / seeds, errors / seeds);
    std::fflush(stdout);
}

void printDailyMonth()
{
    const DailyMonthOptions options;
    const DailyMonth month = simulateDailyMonth(options);
    std::printf("%d keywords, %zu runs in %d days; planned for 09:30 with up to 15 minutes' delay "
                "(UTC).\nDay 12: the machine is off. Days 20 and 21: the service fails, on the "
                "second after 90 searches.\n\n",
                options.keywords, month.runs.size(), options.days);
    std::printf("| day | run at   | measured | not | left | before | told\n"
                "|-----|----------|----------|-----|------|--------|-----\n");
    for (const DailyRun &run : month.runs) {
        const MeasureSummary &summary = run.summary;
        QString told = QStringLiteral("—");
        if (summary.notice) {
            told = summary.notice->title + QStringLiteral(" · ") +
                   QString(summary.notice->text).replace(u'\n', QStringLiteral(" · "));
        }
        std::printf("| %3d | %s%s | %8d | %3d | %4d | %6d | %s\n", run.day,
                    qUtf8Printable(formatInternetDateTime(run.at).mid(11, 5)),
                    run.isCaughtUp ? " up" : "   ", int(summary.measured), int(summary.notMeasured),
                    int(summary.left), int(summary.measuredBefore), qUtf8Printable(told));
    }
    std::printf("\nDays with a measurement: %d to %d of %d. By a rule of 24 hours the same runs "
                "would have made it %d to %d.\n",
                month.fewestDays, month.mostDays, options.days, month.fewestDaysByAge,
                month.mostDaysByAge);
}

const char *wordOf(ListingChangeKind kind)
{
    switch (kind) {
    case ListingChangeKind::Name:
        return "name";
    case ListingChangeKind::Version:
        return "version";
    case ListingChangeKind::Price:
        return "price";
    case ListingChangeKind::Icon:
        return "icon";
    }
    return "";
}

void printComparedMonths()
{
    const ComparedMonthsOptions options;
    const ComparedMonths months = simulateComparedMonths(options);
    std::printf("Two apps, five competitors, %d keywords, %d days, a start a day. After a change "
                "%d %% of the\nanswers are old for %.1f days.\n\n",
                2 * options.keywordsOfEachApp, options.days, options.stalePercent,
                options.staleAnswers / Seconds(secondsPerDay));
    std::printf("| %-44s | %3s | %-7s | %-10s | change\n", "app", "day", "new", "storefront");
    std::printf("|----------------------------------------------|-----|---------|------------|---"
                "----\n");
    for (const auto &[app, trackId, day, change] : months.noticed) {
        std::printf("| %-44s | %3d | %-7s | %-10s | %s → %s\n", qPrintable(app), day,
                    wordOf(change.kind), qPrintable(change.storefront), qPrintable(change.earlier),
                    qPrintable(change.later));
    }
    std::printf("\nDays with standings: %d of %d. The competitor tracked on day %d stands in them "
                "from day %d on.\n",
                months.fewestDaysOfStandings, options.days, dayOfLateRival,
                months.firstDayOfLateRival);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (application.arguments().contains(QStringLiteral("--daily"))) {
        printDailyMonth();
        return 0;
    }
    if (application.arguments().contains(QStringLiteral("--compared"))) {
        printComparedMonths();
        return 0;
    }
    const int seeds = std::max(1, argc > 1 ? std::atoi(argv[1]) : 10);
    std::printf("31 days, 200 keywords, window open 8 hours a day, %d seeds.\n"
                "Days observed: of the worst keyword in the worst and in the best seed, then the "
                "average of all;\n"
                "the rest are averages of a seed.\n\n",
                seeds);
    std::printf("| %-36s | %5s | %8s | %5s | %7s | %8s | %6s |\n", "", "fault", "worst", "avg.",
                "below30", "searches", "errors");
    std::printf("|--------------------------------------|-------|----------|-------|---------|"
                "----------|--------|\n");
    for (const Row &row : rows) {
        for (const double faults : {0.0, 0.02, 0.05})
            printRow(row, faults, seeds);
    }
    return 0;
}
