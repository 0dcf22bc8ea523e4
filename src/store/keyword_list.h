// SPDX-License-Identifier: GPL-3.0-or-later
// The tracked keywords in their order, found by id and by what they say.
#pragma once

#include "model/tracked_keyword.h"
#include "store/placed.h"

#include <QHash>
#include <QList>
#include <QSet>

namespace veltrix
{

/// The list, with an index by id and one by app, text and storefront.
class KeywordList
{
public:
    KeywordList() = default;
    explicit KeywordList(QList<TrackedKeyword> keywords);

    [[nodiscard]] const QList<TrackedKeyword> &all() const { return m_keywords; }
    /// Null when there is none. Valid until the list changes.
    [[nodiscard]] const TrackedKeyword *find(const QUuid &id) const;
    /// The first keyword of the app in the storefront whose text is the same ignoring case
    /// (foldedCase()); null when there is none.
    [[nodiscard]] const TrackedKeyword *findSame(const QUuid &appId, const QString &text,
                                                 const QString &country) const;

    void append(TrackedKeyword keyword);
    /// Takes out the keywords with these ids; in their order.
    std::vector<Placed<TrackedKeyword>> take(const QSet<QUuid> &ids);
    /// Puts keywords back where they were taken out.
    void putBack(const std::vector<Placed<TrackedKeyword>> &taken);

private:
    struct Meaning {
        QUuid appId;
        QString foldedText;
        QString country;

        bool operator==(const Meaning &) const = default;
        friend size_t qHash(const Meaning &meaning, size_t seed = 0)
        {
            return qHashMulti(seed, meaning.appId, meaning.foldedText, meaning.country);
        }
    };

    void index(qsizetype place);

    QList<TrackedKeyword> m_keywords;
    /// Places in m_keywords; of several with one id or one meaning, the first.
    QHash<QUuid, qsizetype> m_byId;
    QHash<Meaning, qsizetype> m_byMeaning;
};

} // namespace veltrix
