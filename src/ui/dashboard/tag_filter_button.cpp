// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/tag_filter_button.h"

#include "ui/dashboard/tag_checklist.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/text/tool_tip_text.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// Characters of a name that the button shows.
constexpr qsizetype mostShown = 24;

} // namespace

TagFilterButton::TagFilterButton(QWidget *parent)
    : Button(Kind::Standard, QStringLiteral("tag"), QString(), parent)
{
    setObjectName(QStringLiteral("tagFilter"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setChosen({});
    connect(this, &Button::clicked, this, &TagFilterButton::openList);
}

void TagFilterButton::setChosen(const TagFilter &filter)
{
    m_filter = filter;
    QString title = filter.title();
    if (title.size() > mostShown)
        title = title.first(mostShown - 1).trimmed() + QStringLiteral("…");
    setText(title.replace(u'&', QStringLiteral("&&")));
    setAccessibleName(tr("Tag filter: %1").arg(filter.sentence()));
    setToolTip(filter.showsAll() ? QString() : toolTipText(filter.sentence()));
    updateGeometry();
}

QSize TagFilterButton::minimumSizeHint() const
{
    const QSize whole = sizeHint();
    return {std::min(whole.width(), fontMetrics().averageCharWidth() * 16), whole.height()};
}

void TagFilterButton::openList()
{
    auto *list = TagChecklist::open(this, TagCheckModel::Offer::Untagged, tr("Tags to show"),
                                    tr("Search tags"));
    const auto show = [this, list] {
        QList<TagState> states;
        for (const QString &tag :
             joinedTags(m_allTags ? m_allTags() : QStringList(), m_filter.tags()))
            states.append({tag, m_filter.has(tag) ? Qt::Checked : Qt::Unchecked});
        list->model().setTags(states);
        list->model().setUntagged(m_filter.hasUntagged());
    };
    show();
    list->setNote(m_problem.isEmpty() ? tr("Keywords with any of the checked tags are shown.")
                                      : m_problem);
    connect(list, &TagChecklist::wanted, this,
            [this, show](const TagCheckModel::Row &row, bool isChecked) {
                TagFilter filter = m_filter;
                if (row.kind == TagCheckModel::Row::Kind::Untagged)
                    filter.setUntagged(isChecked);
                else
                    filter.set(row.name, isChecked);
                setChosen(filter);
                show();
                Q_EMIT picked(filter);
            });
}

} // namespace veltrix
