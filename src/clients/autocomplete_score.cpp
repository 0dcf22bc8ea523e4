// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/autocomplete_score.h"

#include "model/text_folding.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace veltrix
{

namespace
{

constexpr qsizetype shortestPrefix = 2;

/// Whether the window of the median lies behind a day.
bool isPast(const AutocompleteDailyScore &entry, std::int64_t today)
{
    return entry.day <= today - medianWindowDays;
}

/// The median of one or more values, the mean of the middle two rounded half away from zero.
std::int64_t medianOf(std::vector<std::int64_t> values)
{
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    if (values.size() % 2 == 1)
        return values[middle];
    return std::llround(double(values[middle - 1]) / 2 + double(values[middle]) / 2);
}

} // namespace

std::int64_t autocompleteDay(Date date)
{
    // 1970-01-01 lies 11,323 days before day 0 of utcDay().
    constexpr auto between = std::int64_t(unixSecondsAtReferenceEpoch / secondsPerDay);
    return std::min(utcDay(date), std::numeric_limits<std::int64_t>::max() - between) + between;
}

QStringList autocompletePrefixes(const QString &keyword)
{
    const std::u32string characters = keyword.toStdU32String();
    const auto full = qsizetype(characters.size());
    if (full == 0)
        return {};
    if (full <= shortestPrefix)
        return {keyword};
    const qsizetype count = std::min<qsizetype>(mostAutocompleteProbes, full - shortestPrefix + 1);
    QStringList prefixes;
    for (qsizetype i = 0; i < count; ++i) {
        const double step = double(full - shortestPrefix) / double(count - 1);
        const qsizetype length = shortestPrefix + std::llround(double(i) * step);
        qsizetype units = 0;
        for (const char32_t c : characters.substr(0, size_t(length)))
            units += QChar::requiresSurrogates(c) ? 2 : 1;
        prefixes.append(keyword.first(units));
    }
    return prefixes;
}

std::optional<std::int64_t> rankAmong(const QStringList &suggestions, const QString &keyword)
{
    const QString wanted = foldedForSearch(keyword.trimmed());
    for (qsizetype i = 0; i < suggestions.size(); ++i) {
        if (foldedForSearch(suggestions[i].trimmed()) == wanted)
            return i + 1;
    }
    return std::nullopt;
}

std::optional<std::int64_t> visibilityScore(const QList<AutocompleteProbe> &probes,
                                            const QString &keyword)
{
    const double full = double(keyword.toUcs4().size());
    double points = 0;
    double weights = 0;
    for (const AutocompleteProbe &probe : probes) {
        const double length = double(probe.prefix.toUcs4().size());
        if (length >= full)
            continue;
        const double weight = 1 - length / full;
        weights += weight;
        if (probe.exactRank)
            points += weight / std::log2(1 + double(*probe.exactRank));
    }
    if (weights == 0)
        return std::nullopt;
    return std::clamp<std::int64_t>(std::llround(100 * points / weights), 0, 100);
}

VisibilityReport reportVisibility(const QList<AutocompleteDailyScore> &history, std::int64_t today)
{
    VisibilityReport report;
    QSet<std::int64_t> days;
    std::vector<std::int64_t> window;
    std::optional<std::int64_t> todays;
    for (const AutocompleteDailyScore &entry : history) {
        if (isPast(entry, today) || entry.day > today)
            continue;
        days.insert(entry.day);
        window.push_back(entry.score);
        if (entry.day == today)
            todays = entry.score;
    }
    report.observedDays = days.size();
    if (!window.empty()) {
        const auto [lowest, highest] = std::minmax_element(window.begin(), window.end());
        report.spread = *highest - *lowest;
    }
    if (report.observedDays < daysForMedian)
        report.score = todays;
    else
        report.score = medianOf(window);
    return report;
}

void dropUnreadScores(std::map<QString, QList<AutocompleteDailyScore>> &history, std::int64_t today)
{
    for (auto &[keyword, scores] : history) {
        scores.removeIf(
            [today](const AutocompleteDailyScore &score) { return isPast(score, today); });
    }
    std::erase_if(history, [](const auto &entry) { return entry.second.isEmpty(); });
}

} // namespace veltrix
