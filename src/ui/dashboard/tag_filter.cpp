// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/tag_filter.h"

#include "model/text_folding.h"
#include "ui_kit/text/shown_text.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(TagFilter)
};

} // namespace

TagFilter TagFilter::only(const QString &tag)
{
    TagFilter filter;
    filter.set(tag, true);
    return filter;
}

bool TagFilter::has(const QString &tag) const
{
    return m_folded.contains(foldedCase(tag));
}

void TagFilter::set(const QString &tag, bool isChosen)
{
    const QString folded = foldedCase(tag);
    const qsizetype place = m_folded.indexOf(folded);
    if (isChosen == (place >= 0))
        return;
    if (isChosen) {
        m_tags.append(tag);
        m_folded.append(folded);
    } else {
        m_tags.removeAt(place);
        m_folded.removeAt(place);
    }
}

void TagFilter::keepOnly(const QStringList &tags)
{
    QStringList kept;
    for (const QString &tag : tags)
        kept.append(foldedCase(tag));
    const QStringList chosen = m_tags;
    for (const QString &tag : chosen) {
        if (!kept.contains(foldedCase(tag)))
            set(tag, false);
    }
}

bool TagFilter::shows(const QStringList &folded) const
{
    if (showsAll())
        return true;
    if (folded.isEmpty())
        return m_hasUntagged;
    return std::any_of(folded.begin(), folded.end(),
                       [this](const QString &tag) { return m_folded.contains(tag); });
}

QString TagFilter::title() const
{
    if (showsAll())
        return Texts::tr("All Tags");
    const QString first = m_tags.isEmpty() ? Texts::tr("Without a tag") : shownLine(m_tags.first());
    const qsizetype others = m_tags.size() + qsizetype(m_hasUntagged) - 1;
    return others == 0 ? first : first + QStringLiteral(" +") + QLocale().toString(others);
}

QString TagFilter::sentence() const
{
    if (showsAll())
        return title();
    QStringList parts;
    for (const QString &tag : m_tags)
        parts.append(inSentence(tag));
    if (m_hasUntagged)
        parts.append(Texts::tr("Without a tag"));
    return parts.join(QStringLiteral(", "));
}

QString TagFilter::nothingPassedTitle() const
{
    return m_tags.isEmpty() ? Texts::tr("No untagged keywords") : Texts::tr("No tagged keywords");
}

QString TagFilter::nothingPassedText() const
{
    if (m_tags.isEmpty())
        return Texts::tr("Every keyword has a tag.");
    if (m_tags.size() == 1 && !m_hasUntagged)
        return Texts::tr("No keyword has the tag “%1”.").arg(inSentence(m_tags.first()));
    return Texts::tr("No keyword has one of the chosen tags.");
}

} // namespace veltrix
