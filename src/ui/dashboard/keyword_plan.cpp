// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_plan.h"

#include "model/storefront_codes.h"
#include "model/tag_name.h"
#include "model/text_folding.h"

#include <algorithm>
#include <utility>

namespace veltrix
{

namespace
{

/// The bit of a storefront; none for what is no storefront.
quint64 bitOf(const QString &storefront)
{
    const qsizetype place = storefrontCodes().indexOf(storefront.toUpper());
    return place < 0 ? 0 : quint64(1) << place;
}

struct Place {
    QString storefront;
    quint64 bit = 0;
};

} // namespace

KeywordPlanner::KeywordPlanner(const QList<TrackedKeyword> &tracked, const QString &appName)
    : m_appName(foldedCase(appName.simplified()))
{
    m_tracked.reserve(tracked.size());
    for (const TrackedKeyword &keyword : tracked)
        m_tracked[foldedCase(keyword.keyword)] |= bitOf(keyword.country);
}

bool KeywordPlanner::isTracked(const QString &keyword, const QStringList &storefronts) const
{
    const Storefronts tracked = m_tracked.value(foldedCase(keyword));
    return std::all_of(storefronts.begin(), storefronts.end(),
                       [tracked](const QString &code) { return (tracked & bitOf(code)) != 0; });
}

bool KeywordPlanner::isOfThisApp(const EnteredKeyword &entered) const
{
    return m_appName.isEmpty() || entered.app.isEmpty() || foldedCase(entered.app) == m_appName;
}

void KeywordPlanner::planTags(const EnteredKeyword &entered, const QString &storefront,
                              KeywordPlan &plan)
{
    QStringList usable;
    for (const QString &tag : entered.tags) {
        if (const auto name = usableTagName(tag)) {
            usable.append(*name);
            continue;
        }
        RefusedLine refused(tagRefusal(tag).value_or(QString()), entered.line);
        if (refused.reason.endsWith(u'.'))
            refused.reason.chop(1);
        refused.keyword = tag;
        const bool isTold =
            std::any_of(plan.refusedTags.begin(), plan.refusedTags.end(),
                        [&tag](const RefusedLine &other) { return other.keyword == tag; });
        if (!isTold)
            plan.refusedTags.append(refused);
    }
    if (!usable.isEmpty())
        plan.tagged.append({{entered.keyword, storefront}, usable});
}

KeywordPlan KeywordPlanner::plan(const QList<EnteredKeyword> &entered,
                                 const QStringList &storefronts)
{
    QList<Place> everywhere;
    for (const QString &storefront : storefronts)
        everywhere.append({storefront, bitOf(storefront)});
    KeywordPlan plan;
    plan.entered = entered.size();
    for (const EnteredKeyword &given : entered) {
        if (!isOfThisApp(given)) {
            ++plan.ofOtherApps;
            continue;
        }
        const QString &text = given.keyword;
        const auto &country = given.country;
        const QList<Place> places =
            country ? QList<Place>{{*country, bitOf(*country)}} : everywhere;
        if (places.isEmpty())
            continue;
        const QString folded = foldedCase(text);
        const auto tracked = m_tracked.value(folded);
        auto &planned = m_planned[folded];
        // The storefronts to choose from are all of them good, so one tells for all.
        const auto reason = keywordRefusal(text, places.constFirst().storefront);
        qsizetype fresh = 0;
        for (const auto &[storefront, bit] : places) {
            const auto elsewhere = std::pair(storefront, folded);
            if (bit == 0 ? m_elsewhere.contains(elsewhere) : (planned & bit) != 0)
                continue;
            ++fresh;
            planned |= bit;
            if (bit == 0)
                m_elsewhere.insert(elsewhere);
            if (reason)
                continue;
            plan.keywords.append({text, storefront});
            if (tracked & bit)
                continue;
            ++plan.added;
            ++plan.addedIn[storefront];
            planTags(given, storefront, plan);
        }
        if (fresh == 0)
            ++plan.repeated;
        else if (reason)
            plan.refused.append(
                {RefusedKeyword{text, places.constFirst().storefront, *reason}, given.line});
    }
    return plan;
}

} // namespace veltrix
