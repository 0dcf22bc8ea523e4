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

std::vector<Placed<TrackedKeyword>> KeywordList::take(const QSet<QUuid> &ids)
{
    QList<TrackedKeyword> left = m_keywords;
    auto taken =
        takeOut(left, [&](const TrackedKeyword &keyword) { return ids.contains(keyword.id); });
    if (!taken.empty())
        *this = KeywordList(std::move(left));
    return taken;
}

void KeywordList::putBack(const std::vector<Placed<TrackedKeyword>> &taken)
{
    if (taken.empty())
        return;
    QList<TrackedKeyword> whole = m_keywords;
    veltrix::putBack(whole, taken);
    *this = KeywordList(std::move(whole));
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
