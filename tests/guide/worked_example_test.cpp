// SPDX-License-Identifier: GPL-3.0-or-later
// The worked example of the guide, computed by the models from the apps that the page lists.
#include "scoring/app_signals.h"
#include "scoring/competition_model.h"
#include "scoring/difficulty_model.h"
#include "scoring/opportunity_model.h"
#include "scoring/popularity_model.h"

#include <QFile>

#include <gtest/gtest.h>

namespace veltrix
{

namespace
{

constexpr std::int64_t ownTrackId = 5;

QString page()
{
    QFile file(QStringLiteral(VELTRIX_FIGURES_PAGE));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

/// The cells of the table that follows the mark, without its header.
QList<QStringList> tableAfter(const QString &text, const QString &mark)
{
    const QString start = QStringLiteral("<!-- example: %1 -->").arg(mark);
    QList<QStringList> rows;
    for (const QString &line : text.section(start, 1).trimmed().split(u'\n')) {
        if (!line.startsWith(u'|'))
            break;
        QStringList cells;
        for (const QString &cell : line.mid(1, line.lastIndexOf(u'|') - 1).split(u'|'))
            cells.append(cell.trimmed());
        rows.append(cells);
    }
    return rows.mid(2);
}

QString plainNumber(QString text)
{
    return text.remove(u',');
}

ITunesAppResult appOf(const QStringList &cells, std::int64_t trackId)
{
    ITunesAppResult app;
    app.trackId = trackId;
    app.trackName = cells.value(0);
    app.sellerName = cells.value(1);
    app.primaryGenreName = cells.value(2);
    app.userRatingCount = plainNumber(cells.value(3)).toLongLong();
    app.averageUserRating = cells.value(4).toDouble();
    app.releaseDate = cells.value(5) + QStringLiteral("T00:00:00Z");
    return app;
}

QString decimals(double value, int digits)
{
    return QString::number(value, 'f', digits);
}

/// What the models say of the apps, by the names that the page has for it.
QList<QStringList> computed(const QList<ITunesAppResult> &results)
{
    const auto now =
        parseInternetDateTime(QStringLiteral("2026-11-22T00:00:00Z"), FractionalSeconds::Rejected);
    const QString keyword = QStringLiteral("photo editor");
    const KeywordSurvey survey(keyword, results);
    const auto difficulty = assessDifficulty(keyword, difficultySample(results), *now);
    const auto popularity = estimatePopularity(survey, u"US", quorvinPopularityModelVersion);
    const auto competition = assessCompetition(survey, *now);
    const auto rank = rankedPosition(results, ownTrackId);
    const auto opportunity =
        assessOpportunity(survey, {QStringLiteral("US"), popularity.measurement, competition,
                                   ownTrackId, rank, *now});
    QList<QStringList> rows{
        {QStringLiteral("rank"), QString::number(*rank)},
        {QStringLiteral("Difficulty"), QString::number(difficulty.score)},
        {QStringLiteral("Popularity"), QString::number(popularity.measurement->score)},
        {QStringLiteral("Saved raw value (L)"),
         decimals(popularity.measurement->weightedRatingSignal, 2)},
    };
    for (const CompetitionFactor &factor : competitionFactors())
        rows.append({factor.name, decimals(*competition.factors.find(factor.name), 1)});
    rows.append({QStringLiteral("Competition"), QString::number(competition.score)});
    rows.append({QStringLiteral("strength of your app"), decimals(opportunity->appStrength, 1)});
    rows.append({QStringLiteral("Opportunity"), QString::number(opportunity->score)});
    rows.append({QStringLiteral("Target"), opportunity->label});
    return rows;
}

TEST(WorkedExample, IsWhatTheModelsSay)
{
    const QString text = page();
    QList<ITunesAppResult> results;
    for (const QStringList &row : tableAfter(text, QStringLiteral("apps")))
        results.append(appOf(row, results.size() + 1));
    ASSERT_EQ(results.size(), 12);
    QStringList expected;
    for (const QStringList &row : computed(results))
        expected.append(row.join(QStringLiteral(": ")));
    QStringList shown;
    for (const QStringList &row : tableAfter(text, QStringLiteral("results")))
        shown.append(row.value(0) + QStringLiteral(": ") + plainNumber(row.value(1)));
    EXPECT_EQ(shown.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
}

} // namespace

} // namespace veltrix
