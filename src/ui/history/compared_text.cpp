// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/compared_text.h"

#include "ui/history/rank_plot.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/widgets/position_badge.h"

#include <QCoreApplication>
#include <QStringList>

namespace veltrix
{

namespace
{

struct ComparedTexts {
    Q_DECLARE_TR_FUNCTIONS(ComparedHistory)
};

const QString noRank = QStringLiteral("—");

/// The day whose ranks are told: the inspected one, or the last one with a check.
std::optional<size_t> toldDay(const ComparedChart &chart, std::optional<size_t> inspected)
{
    const size_t count = chart.days().size();
    if (inspected && *inspected < count)
        return inspected;
    for (size_t day = count; day-- > 0;) {
        if (chart.hasCheck(day))
            return day;
    }
    return std::nullopt;
}

bool hasChecks(const RankChartData &data)
{
    return !data.points.empty() || !data.unranked.empty();
}

/// What stands at an entry and what is read of it.
std::pair<QString, QString> rankOf(const ComparedLine &line, std::optional<size_t> day)
{
    const auto count = qlonglong(line.data.days.size());
    if (!hasChecks(line.data)) {
        const QString text = ComparedTexts::tr("Not checked in these %L1 days").arg(count);
        return {text, text};
    }
    if (line.data.isEmpty()) {
        const QString text = ComparedTexts::tr("Not ranked in these %L1 days").arg(count);
        return {text, text};
    }
    const auto &check = line.data.days[*day].observation;
    if (!check)
        return {noRank, ComparedTexts::tr("no check")};
    const PositionBadge badge{check->position};
    if (!check->position)
        return {badge.text(), ComparedTexts::tr("not ranked")};
    return {badge.text(), ComparedTexts::tr("rank %1").arg(*check->position)};
}

} // namespace

QString comparedInspection(const ComparedChart &chart, std::optional<size_t> day,
                           const QLocale &locale)
{
    QStringList parts{inspectionText(chart.own.data, day, locale)};
    if (day) {
        for (const DayMark &mark : chart.marksOf(*day))
            parts << mark.text;
    }
    return parts.join(QStringLiteral(" · "));
}

QString spokenDay(const ComparedChart &chart, std::optional<size_t> day, const QLocale &locale)
{
    const QString own = inspectionText(chart.own.data, day, locale);
    if (!day || *day >= chart.days().size())
        return own;
    const std::vector<DayMark> marks = chart.marksOf(*day);
    if (!chart.isCompared() && marks.empty())
        return own;
    QStringList parts;
    for (const ComparedLine *line : chart.shownLines()) {
        const auto &check = line->data.days[*day].observation;
        if (!check)
            continue;
        const QString name = inSentence(line->name);
        parts << (check->position
                      ? ComparedTexts::tr("%1 rank %2").arg(name, QString::number(*check->position))
                      : ComparedTexts::tr("%1 not ranked").arg(name));
    }
    if (parts.isEmpty())
        parts << ComparedTexts::tr("no check saved");
    for (const DayMark &mark : marks)
        parts << (mark.isNote() ? ComparedTexts::tr("note: %1").arg(mark.text) : mark.text);
    return ComparedTexts::tr("%1: %2").arg(dayLabel(chart.days()[*day].date, chart.days(), locale),
                                           parts.join(QStringLiteral(", ")));
}

std::vector<LegendEntry> legendEntries(const ComparedChart &chart, std::optional<size_t> day,
                                       const QLocale &locale)
{
    const std::optional<size_t> told = toldDay(chart, day);
    std::vector<LegendEntry> entries;
    const auto add = [&](const ComparedLine &line) {
        LegendEntry entry{line.key, shownLine(line.name), line.look, line.isOn, {}, false, {}, {}};
        QStringList spoken{inSentence(line.name), ComparedTexts::tr("%1 %2").arg(
                                                      colorName(line.look), shapeName(line.look))};
        if (line.isOn && told) {
            auto [rank, words] = rankOf(line, told);
            entry.rank = rank;
            entry.isSentence = line.data.isEmpty();
            spoken << words;
        }
        if (line.trackedSince) {
            entry.detail = ComparedTexts::tr("Tracked since %1")
                               .arg(dayLabel(*line.trackedSince, chart.days(), locale));
            spoken << entry.detail;
        }
        entry.spoken = spoken.join(QStringLiteral(", "));
        entries.push_back(entry);
    };
    add(chart.own);
    for (const ComparedLine &rival : chart.rivals)
        add(rival);
    return entries;
}

QString legendCaption(const ComparedChart &chart, std::optional<size_t> day, const QLocale &locale)
{
    const std::optional<size_t> told = toldDay(chart, day);
    if (!told)
        return {};
    const QString date = dayLabel(chart.days()[*told].date, chart.days(), locale);
    return day ? ComparedTexts::tr("Ranks on %1").arg(date)
               : ComparedTexts::tr("Ranks of the latest check · %1").arg(date);
}

} // namespace veltrix
