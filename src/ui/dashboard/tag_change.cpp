// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/tag_change.h"

#include "model/text_folding.h"
#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>
#include <QMap>

#include <algorithm>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(TagChange)
};

bool contains(const QStringList &tags, const QString &tag)
{
    return tags.contains(tag, Qt::CaseInsensitive);
}

} // namespace

QList<TagState> tagStates(const QStringList &known, const QList<QStringList> &tagsOfEach)
{
    QHash<QString, qsizetype> counts;
    for (const QStringList &tags : tagsOfEach) {
        for (const QString &tag : tags)
            ++counts[foldedCase(tag)];
    }
    QList<TagState> states;
    for (const QString &tag : known) {
        const qsizetype count = counts.value(foldedCase(tag));
        states.append({tag, count == 0                   ? Qt::Unchecked
                            : count == tagsOfEach.size() ? Qt::Checked
                                                         : Qt::PartiallyChecked});
    }
    return states;
}

QStringList joinedTags(const QStringList &known, const QStringList &more)
{
    QStringList joined = known;
    for (const QString &tag : more) {
        if (!contains(joined, tag))
            joined.append(tag);
    }
    joined.sort(Qt::CaseInsensitive);
    return joined;
}

TagChange::TagChange(const ASOStore &store, const QList<QUuid> &keywordIds)
{
    for (const QUuid &id : keywordIds)
        m_before.insert(id, store.tags(id));
}

bool TagChange::keepChanged(const ASOStore &store)
{
    using Entry = QHash<QUuid, QStringList>::iterator;
    m_before.removeIf([&](Entry entry) { return store.tags(entry.key()) == entry.value(); });
    if (m_before.size() == 1) {
        const auto keyword = store.trackedKeyword(m_before.begin().key());
        m_keyword = keyword ? keyword->keyword : QString();
    }
    return !m_before.isEmpty();
}

void TagChange::undo(ASOStore &store) const
{
    // By tag: the store takes many keywords at once.
    QMap<QString, QList<QUuid>> lost;
    QMap<QString, QList<QUuid>> gained;
    for (auto it = m_before.begin(); it != m_before.end(); ++it) {
        const QStringList now = store.tags(it.key());
        for (const QString &tag : it.value()) {
            if (!contains(now, tag))
                lost[tag].append(it.key());
        }
        for (const QString &tag : now) {
            if (!contains(it.value(), tag))
                gained[tag].append(it.key());
        }
    }
    for (auto it = gained.begin(); it != gained.end(); ++it)
        store.setTag(it.value(), it.key(), false);
    for (auto it = lost.begin(); it != lost.end(); ++it)
        store.setTag(it.value(), it.key(), true);
}

QString TagChange::name() const
{
    return m_before.size() == 1 ? Texts::tr("tags of “%1”").arg(inSentence(m_keyword))
                                : Texts::tr("tags of %L1 keywords").arg(m_before.size());
}

} // namespace veltrix
