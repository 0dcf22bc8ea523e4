// SPDX-License-Identifier: GPL-3.0-or-later
// The tags of several keywords: which all of them have, and how they were before.
#pragma once

#include "store/aso_store.h"

#include <QHash>
#include <QStringList>

namespace veltrix
{

/// A tag, and whether all of some keywords have it, some (Qt::PartiallyChecked), or none.
struct TagState {
    QString name;
    Qt::CheckState state = Qt::Unchecked;

    bool operator==(const TagState &) const = default;
};

/// The state of each tag of `known` over keywords whose tags are `tagsOfEach`. Names that differ by
/// case are one tag.
QList<TagState> tagStates(const QStringList &known, const QList<QStringList> &tagsOfEach);

/// `known` and those of `more` that are not among them, in the order of the alphabet.
QStringList joinedTags(const QStringList &known, const QStringList &more);

/// What the tags of keywords were before they were edited, as one step to undo.
class TagChange
{
public:
    /// Remembers the tags that they have now.
    TagChange(const ASOStore &store, const QList<QUuid> &keywordIds);

    /// Forgets the keywords whose tags are as they were. False when none is left.
    bool keepChanged(const ASOStore &store);
    /// Gives the keywords that are still there the tags that they had. Throws StoreError.
    void undo(ASOStore &store) const;
    /// "tags of “collage maker”" or "tags of 12 keywords".
    [[nodiscard]] QString name() const;

private:
    QHash<QUuid, QStringList> m_before;
    /// The keyword, when there is only one.
    QString m_keyword;
};

} // namespace veltrix
