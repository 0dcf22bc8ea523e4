// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/tag_change.h"

#include "model/text_folding.h"
#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>

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

void TagChange::set(ASOStore &store, const QList<QUuid> &keywordIds, const QString &tag, bool isOn)
{
    QHash<QUuid, QString> others;
    for (const QUuid &id : keywordIds) {
        const auto keyword = store.trackedKeyword(id);
        if (keyword && contains(store.tags(id), tag) != isOn)
            others.insert(id, keyword->keyword);
    }
    store.setTag(keywordIds, tag, isOn);
    const QString folded = foldedCase(tag);
    Changed &changed = m_tags[folded];
    changed.tag = tag;
    for (auto it = others.cbegin(); it != others.cend(); ++it) {
        // What was changed before is as it was again.
        if (changed.keywords.remove(it.key()) == 0)
            changed.keywords.insert(it.key(), {isOn, it.value()});
    }
    if (changed.keywords.isEmpty())
        m_tags.remove(folded);
}

void TagChange::undo(ASOStore &store) const
{
    for (const Changed &changed : m_tags) {
        for (const bool isOn : {true, false}) {
            QList<QUuid> ids;
            for (auto it = changed.keywords.cbegin(); it != changed.keywords.cend(); ++it) {
                if (it->isOn == isOn)
                    ids.append(it.key());
            }
            store.setTag(ids, changed.tag, !isOn);
        }
    }
}

QString TagChange::name() const
{
    QHash<QUuid, QString> keywords;
    for (const Changed &changed : m_tags) {
        for (auto it = changed.keywords.cbegin(); it != changed.keywords.cend(); ++it)
            keywords.insert(it.key(), it->text);
    }
    return keywords.size() == 1
               ? Texts::tr("tags of “%1”").arg(inSentence(keywords.cbegin().value()))
               : Texts::tr("tags of %L1 keywords").arg(keywords.size());
}

} // namespace veltrix
