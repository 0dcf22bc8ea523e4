// SPDX-License-Identifier: GPL-3.0-or-later
// Prints what every model makes of several hundred made-up searches, to the last bit: compiled by
// different compilers and at different levels of optimisation it must print the same text.
#include "scoring/app_keyword_check.h"
#include "scoring/app_signals.h"
#include "scoring/competition_model.h"
#include "scoring/difficulty_model.h"
#include "scoring/opportunity_model.h"
#include "scoring/popularity_model.h"

#include <array>
#include <cinttypes>
#include <cstdio>

using namespace veltrix;

namespace
{

constexpr int searches = 400;
constexpr std::int64_t ownId = 77;

/// A generator of its own, because those of the standard library differ between implementations.
class Dice
{
public:
    explicit Dice(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t roll(std::uint64_t sides)
    {
        m_state += 0x9e3779b97f4a7c15ULL;
        std::uint64_t z = m_state;
        z = (z ^ (z >> 30U)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27U)) * 0x94d049bb133111ebULL;
        return (z ^ (z >> 31U)) % sides;
    }

    bool oneIn(std::uint64_t sides) { return roll(sides) == 0; }

    template <class T, size_t count>
    const T &pick(const std::array<T, count> &choices)
    {
        return choices[roll(count)];
    }

private:
    std::uint64_t m_state;
};

constexpr std::array<const char *, 24> words{
    "Photo",   "Editor", "Options", "stock", "TRADING",  "video",   "Call",    "market",
    "signals", "Pro",    "Free",    "for",   "the",      "collage", "Filters", "2048",
    "карта",   "写真",   "แผนที่",    "café",  "İstanbul", "put",     "invest",  "lab"};
constexpr std::array<const char *, 6> joints{" ", " ", " ", "-", ": ", " & "};
constexpr std::array<const char *, 6> sellers{"Acme Inc",  "ACME inc", " Acme Inc ",
                                              "Photo Lab", "Ümit",     ""};
constexpr std::array<const char *, 4> genres{"Finance", "Photo & Video", "Utilities", "Games"};
constexpr std::array<const char *, 9> storefronts{"US", "us", "US", "DE", "CN",
                                                  "GB", "AI", "VN", "XX"};

QString phrase(Dice &dice, std::uint64_t longest)
{
    QString text;
    const std::uint64_t length = dice.roll(longest + 1);
    for (std::uint64_t i = 0; i < length; ++i) {
        if (i > 0)
            text += QString::fromUtf8(dice.pick(joints));
        text += QString::fromUtf8(dice.pick(words));
    }
    return text;
}

std::int64_t ratings(Dice &dice)
{
    if (dice.oneIn(20))
        return -std::int64_t(dice.roll(5000));
    std::int64_t scale = 1;
    for (std::uint64_t digits = dice.roll(8); digits > 0; --digits)
        scale *= 10;
    return std::int64_t(dice.roll(1000)) * scale / 100;
}

QString releaseDate(Dice &dice)
{
    const QString date = QStringLiteral("%1-%2-%3")
                             .arg(2008 + dice.roll(20))
                             .arg(1 + dice.roll(12), 2, 10, QLatin1Char('0'))
                             .arg(1 + dice.roll(28), 2, 10, QLatin1Char('0'));
    if (dice.oneIn(12))
        return date;
    const QString time = QStringLiteral("T%1:30:05").arg(dice.roll(24), 2, 10, QLatin1Char('0'));
    return date + time + (dice.oneIn(10) ? QStringLiteral(".25Z") : QStringLiteral("Z"));
}

/// One app in `strangers` speaks to the keyword.
ITunesAppResult makeApp(Dice &dice, const QString &keyword, std::uint64_t strangers)
{
    ITunesAppResult app;
    app.trackId = dice.oneIn(25) ? ownId : std::int64_t(1000 + dice.roll(1000));
    if (!dice.oneIn(15))
        app.trackName = dice.oneIn(strangers) ? keyword + u' ' + phrase(dice, 3) : phrase(dice, 6);
    if (dice.oneIn(2))
        app.subtitle = phrase(dice, 4);
    if (!dice.oneIn(8))
        app.userRatingCount = ratings(dice);
    if (!dice.oneIn(8))
        app.averageUserRating = double(dice.roll(51)) / 10;
    if (!dice.oneIn(8))
        app.releaseDate = releaseDate(dice);
    if (!dice.oneIn(6))
        app.sellerName = QString::fromUtf8(dice.pick(sellers));
    if (!dice.oneIn(6))
        app.primaryGenreName = QString::fromUtf8(dice.pick(genres));
    return app;
}

void printText(const char *name, const std::optional<QString> &text)
{
    std::printf("%s=%s\t", name, text ? text->toUtf8().constData() : "(none)");
}

void printApp(const ITunesAppResult &app)
{
    std::printf("app\tid=%" PRId64 "\t", *app.trackId);
    printText("name", app.trackName);
    printText("subtitle", app.subtitle);
    printText("seller", app.sellerName);
    printText("genre", app.primaryGenreName);
    printText("released", app.releaseDate);
    if (app.userRatingCount)
        std::printf("ratings=%" PRId64 "\t", *app.userRatingCount);
    if (app.averageUserRating)
        std::printf("stars=%a\t", *app.averageUserRating);
    std::printf("\n");
}

void printDifficulty(const DifficultyAssessment &difficulty)
{
    const DifficultyComponents &c = difficulty.components;
    std::printf("difficulty\t%" PRId64 "\t%" PRId64 "\t%" PRId64 "\t%" PRId64
                "\t%a\t%a\t%a\t%a\t%a\t%a\n",
                difficulty.score, *c.sampledAppCount, *c.missingReviewCount,
                *c.missingReleaseDateCount, c.averageReviewsTop10, c.averageAgeYearsTop10,
                c.averageKeywordMatchTop10, c.reviewComponent, c.ageComponent, c.matchComponent);
}

void printCompetition(const CompetitionAssessment &competition)
{
    std::printf("competition\t%" PRId64 "\t%" PRId64 "\t%s\n", competition.score,
                competition.sampleCount, competition.adjustment.toUtf8().constData());
    for (const auto &[name, value] : competition.factors)
        std::printf("factor\t%s\t%a\n", name.toUtf8().constData(), value);
}

void printPopularity(const PopularityAssessment &popularity)
{
    if (popularity.measurement)
        std::printf("popularity\t%" PRId64 "\t%" PRId64 "\t%" PRId64 "\t%a\t",
                    popularity.measurement->score, popularity.measurement->sampledApps,
                    popularity.measurement->ratedRelevantApps,
                    popularity.measurement->weightedRatingSignal);
    std::printf("%s\n", popularity.message.toUtf8().constData());
}

void printOpportunity(const std::optional<OpportunityAssessment> &opportunity)
{
    if (!opportunity) {
        std::printf("opportunity\tnone\n");
        return;
    }
    std::printf("opportunity\t%" PRId64 "\t%a\t%d\t%s\t%s\n", opportunity->score,
                opportunity->appStrength, int(opportunity->usedNewAppBaseline),
                opportunity->label.toUtf8().constData(),
                opportunity->explanation.toUtf8().constData());
}

void printSearch(Dice &dice, Date now)
{
    const QString keyword = phrase(dice, 3);
    const QString storefront = QString::fromUtf8(dice.pick(storefronts));
    const std::uint64_t strangers = 1 + dice.roll(4);
    QList<ITunesAppResult> results;
    for (std::uint64_t i = dice.roll(40); i > 0; --i)
        results.append(makeApp(dice, keyword, strangers));
    std::printf("search\t%s\t%s\n", keyword.toUtf8().constData(), storefront.toUtf8().constData());
    for (const ITunesAppResult &app : results)
        printApp(app);

    printDifficulty(assessDifficulty(keyword, difficultySample(results), now));
    const KeywordSurvey survey(keyword, results);
    const auto competition = assessCompetition(survey, now);
    printCompetition(competition);
    const auto popularity = estimatePopularity(survey, storefront, quorvinPopularityModelVersion);
    printPopularity(popularity);
    const OpportunityQuery query{.storefront = storefront,
                                 .popularity = popularity.measurement,
                                 .competition = competition,
                                 .trackId = ownId,
                                 .position = rankedPosition(results, ownId),
                                 .now = now};
    printOpportunity(assessOpportunity(survey, query));
    if (!results.isEmpty())
        std::printf("phrases\t%s\n",
                    keywordPhrases(results.front()).join(u'/').toUtf8().constData());
}

/// The smooth parts of the opportunity model, over their whole range.
void printRanks()
{
    for (int step = -1000; step <= 1000; ++step) {
        const double gap = double(step) / 10 + 0.037;
        const double rank = expectedRank(gap);
        std::printf("rank\t%a\t%a\t%a\n", gap, rank, tapThroughShare(rank));
    }
}

} // namespace

int main()
{
    const auto now = parseInternetDateTime(u"2026-11-21T12:00:00Z");
    Dice dice(20010101);
    for (int i = 0; i < searches; ++i)
        printSearch(dice, *now);
    printRanks();
    return std::ferror(stdout) != 0 ? 1 : 0;
}
