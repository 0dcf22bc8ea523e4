// SPDX-License-Identifier: GPL-3.0-or-later
// Which keywords are let in, and which of those that are there cannot be measured.
#include "model/text_folding.h"
#include "store/aso_store.h"

namespace veltrix
{

TrackedKeyword ASOStore::addTrackedKeyword(QUuid appId, QString keyword, QString country)
{
    const KeywordAdmission admission = addTrackedKeywords(appId, {keyword}, country);
    if (admission.refused.isEmpty())
        return admission.kept.constFirst();
    const RefusedKeyword &refused = admission.refused.constFirst();
    throw StoreError(422,
                     unmeasurableSentence(keyword, refusalReason(refused.reason, refused.country)));
}

KeywordAdmission ASOStore::addTrackedKeywords(QUuid appId, const QStringList &keywords,
                                              const QString &country)
{
    requireStateRead();
    if (!app(appId))
        throw StoreError(404, QStringLiteral("App not found"));
    const QString storefront = country.toUpper();
    KeywordAdmission admission;
    QList<QUuid> added;
    QSet<QString> seen;
    for (const QString &text : keywords) {
        const QString folded = foldedCase(text);
        if (seen.contains(folded))
            continue;
        seen.insert(folded);
        if (const auto reason = keywordRefusal(text, storefront)) {
            admission.refused.append({text, country, *reason});
            continue;
        }
        if (const TrackedKeyword *known = m_keywords.findSame(appId, text, storefront)) {
            admission.kept.append(*known);
            continue;
        }
        const TrackedKeyword keyword{QUuid::createUuid(), appId, text, storefront, m_clock->now()};
        m_keywords.append(keyword);
        admission.kept.append(keyword);
        added.append(keyword.id);
    }
    admission.added = added.size();
    if (added.isEmpty())
        return admission;
    for (const QUuid &id : std::as_const(added))
        Q_EMIT keywordAdded(id);
    save();
    return admission;
}

std::optional<QString> ASOStore::unmeasurableReason(const TrackedKeyword &keyword) const
{
    if (const auto refusal = keywordRefusal(keyword.keyword, keyword.country))
        return refusalReason(*refusal, keyword.country);
    if (!app(keyword.appId))
        return appGoneReason();
    return std::nullopt;
}

QList<TrackedKeyword> ASOStore::keywordsWithoutApp() const
{
    QSet<QUuid> appIds;
    for (const AppProfile &app : m_apps)
        appIds.insert(app.id);
    QList<TrackedKeyword> result;
    for (const TrackedKeyword &keyword : m_keywords.all()) {
        if (!appIds.contains(keyword.appId))
            result.append(keyword);
    }
    return result;
}

} // namespace veltrix
