// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/tag_editor.h"

#include "store/store_error.h"
#include "ui/dashboard/tag_checklist.h"
#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>

#include <memory>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(TagEditor)
};

/// What is edited while the popover is open.
struct Editing {
    ASOStore &store;
    QList<QUuid> keywordIds;
    TagChange change;
    /// Those that were there since it opened: one that no keyword has any more can be checked anew.
    QStringList known;

    [[nodiscard]] QList<TagState> states()
    {
        const auto first = store.trackedKeyword(keywordIds.first());
        if (first)
            known = joinedTags(known, store.allTags(first->appId));
        QList<QStringList> tagsOfEach;
        for (const QUuid &id : std::as_const(keywordIds))
            tagsOfEach.append(store.tags(id));
        return tagStates(known, tagsOfEach);
    }
};

QString headingFor(const ASOStore &store, const QList<QUuid> &keywordIds)
{
    if (keywordIds.size() > 1)
        return Texts::tr("Tags of %L1 keywords").arg(keywordIds.size());
    const auto keyword = store.trackedKeyword(keywordIds.first());
    return Texts::tr("Tags of “%1”").arg(keyword ? inSentence(keyword->keyword) : QString());
}

} // namespace

void openTagEditor(ASOStore &store, QWidget *anchor, const QList<QUuid> &keywordIds,
                   const QString &note, std::function<void(const TagChange &change)> edited)
{
    auto editing = std::make_shared<Editing>(Editing{store, keywordIds, {}, {}});
    auto *list = TagChecklist::open(anchor, TagCheckModel::Offer::NewTag,
                                    headingFor(store, keywordIds), Texts::tr("Find or add a tag"));
    const auto show = [list, editing] {
        list->model().setTags(editing->states());
    };
    list->setNote(note);
    show();
    QObject::connect(&store, &ASOStore::tagsChanged, list, show);
    QObject::connect(list, &TagChecklist::wanted, list,
                     [list, editing](const TagCheckModel::Row &row, bool isChecked) {
                         try {
                             editing->change.set(editing->store, editing->keywordIds, row.name,
                                                 isChecked);
                         } catch (const StoreError &error) {
                             list->setProblem(error.description());
                         }
                     });
    QObject::connect(list, &TagChecklist::closed, list, [editing, edited = std::move(edited)] {
        if (!editing->change.isEmpty())
            edited(editing->change);
    });
}

} // namespace veltrix
