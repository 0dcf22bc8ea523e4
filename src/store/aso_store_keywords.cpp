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
    QList<KeywordToTrack> list;
    for (const QString &keyword : keywords)
        list.append({keyword, country});
    return addTrackedKeywords(appId, list);
}

KeywordAdmission ASOStore::addTrackedKeywords(QUuid appId, const QList<KeywordToTrack> &keywords)
{
    requireStateRead();
    if (!app(appId))
        throw StoreError(404, QStringLiteral("App not found"));
    KeywordAdmission admission;
    QList<QUuid> added;
    QSet<std::pair<QString, QString>> seen;
    for (const auto &[text, country] : keywords) {
        const QString storefront = country.toUpper();
        const auto meaning = std::pair(storefront, foldedCase(text));
        if (seen.contains(meaning))
            continue;
        seen.insert(meaning);
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
