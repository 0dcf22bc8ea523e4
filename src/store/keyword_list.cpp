// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/keyword_list.h"

#include "model/text_folding.h"

namespace veltrix
{

KeywordList::KeywordList(QList<TrackedKeyword> keywords) : m_keywords(std::move(keywords))
{
    for (qsizetype place = 0; place < m_keywords.size(); ++place)
        index(place);
}

const TrackedKeyword *KeywordList::find(const QUuid &id) const
{
    const auto place = m_byId.constFind(id);
    return place == m_byId.cend() ? nullptr : &m_keywords[*place];
}

const TrackedKeyword *KeywordList::findSame(const QUuid &appId, const QString &text,
                                            const QString &country) const
{
    const auto place = m_byMeaning.constFind(Meaning{appId, foldedCase(text), country});
    return place == m_byMeaning.cend() ? nullptr : &m_keywords[*place];
}

void KeywordList::append(TrackedKeyword keyword)
{
    m_keywords.append(std::move(keyword));
    index(m_keywords.size() - 1);
}

void KeywordList::remove(const QSet<QUuid> &ids)
{
    QList<TrackedKeyword> kept = m_keywords;
    kept.removeIf([&](const TrackedKeyword &keyword) { return ids.contains(keyword.id); });
    *this = KeywordList(std::move(kept));
}

void KeywordList::index(qsizetype place)
{
    const TrackedKeyword &keyword = m_keywords[place];
    const Meaning meaning{keyword.appId, foldedCase(keyword.keyword), keyword.country};
    if (!m_byId.contains(keyword.id))
        m_byId.insert(keyword.id, place);
    if (!m_byMeaning.contains(meaning))
        m_byMeaning.insert(meaning, place);
}

} // namespace veltrix
