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

/// Tags that were put on keywords and taken off, as one step to undo. It knows of these alone: what
/// the keywords get by other ways, from an import or a history that is read late, is not touched.
class TagChange
{
public:
    /// Puts a tag on keywords or takes it off, and remembers of which that was not so before.
    /// Throws what ASOStore::setTag() throws.
    void set(ASOStore &store, const QList<QUuid> &keywordIds, const QString &tag, bool isOn);
    /// Nothing was changed, or all of it was changed back.
    [[nodiscard]] bool isEmpty() const { return m_tags.isEmpty(); }
    /// Takes it back for the keywords that are still there. Throws StoreError.
    void undo(ASOStore &store) const;
    /// "tags of “collage maker”" or "tags of 12 keywords".
    [[nodiscard]] QString name() const;

private:
    struct Changed {
        QString tag;
        /// Whether each keyword that has changed has the tag now, and its text.
        struct Keyword {
            bool isOn = false;
            QString text;
        };
        QHash<QUuid, Keyword> keywords;
    };
    /// By the folded name.
    QHash<QString, Changed> m_tags;
};

} // namespace veltrix
