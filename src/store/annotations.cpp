// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/annotations.h"

#include "model/text_folding.h"

#include <algorithm>
#include <tuple>

namespace veltrix
{

namespace
{

auto findTag(const QStringList &tags, const QString &name)
{
    const QString folded = foldedCase(name);
    return std::ranges::find(tags, folded, [](const QString &tag) { return foldedCase(tag); });
}

bool isBefore(const QString &one, const QString &other)
{
    return std::pair(foldedCase(one), one) < std::pair(foldedCase(other), other);
}

} // namespace

Annotations::News Annotations::adopt(const WrittenNotes &written)
{
    News news;
    m_areRead = true;
    for (const auto &[keywordId, name] : written.tags) {
        m_forms.insert(foldedCase(name), name);
        putTag(m_tags[keywordId], name);
        news.keywords.insert(keywordId);
    }
    for (const AppNote &note : written.notes) {
        m_notes.insert(note.id, note);
        news.apps.insert(note.appId);
    }
    for (const auto &earlier : std::exchange(m_earlier, {}))
        std::visit([this](const auto &edit) { apply(edit); }, earlier);
    return news;
}

template <class Edit>
void Annotations::remember(const Edit &edit)
{
    if (!m_areRead)
        m_earlier.emplace_back(edit);
}

std::optional<SetTag> Annotations::tagEdit(const QUuid &keywordId, const QString &tag,
                                           bool isOn) const
{
    const QStringList present = tags(keywordId);
    const auto known = findTag(present, tag);
    if ((known != present.cend()) == isOn)
        return std::nullopt;
    const QString name = isOn ? m_forms.value(foldedCase(tag), tag) : *known;
    return SetTag{keywordId, name, isOn};
}

void Annotations::putTag(QStringList &tags, const QString &name)
{
    if (findTag(tags, name) == tags.cend())
        tags.insert(std::ranges::upper_bound(tags, name, isBefore) - tags.begin(), name);
}

void Annotations::apply(const SetTag &edit)
{
    remember(edit);
    QStringList &tags = m_tags[edit.keywordId];
    if (edit.isOn) {
        const QString folded = foldedCase(edit.tag);
        if (!m_forms.contains(folded))
            m_forms.insert(folded, edit.tag);
        putTag(tags, edit.tag);
    } else if (const auto known = findTag(tags, edit.tag); known != tags.cend()) {
        tags.erase(known);
    }
    if (tags.isEmpty())
        m_tags.remove(edit.keywordId);
}

QList<AppNote> Annotations::notes(const QUuid &appId) const
{
    QList<AppNote> result;
    for (const AppNote &note : m_notes) {
        if (note.appId == appId)
            result.append(note);
    }
    std::ranges::sort(result, {}, [](const AppNote &note) {
        return std::tuple(note.day, note.writtenAt, note.id);
    });
    return result;
}

std::optional<AppNote> Annotations::note(const QUuid &id) const
{
    const auto known = m_notes.constFind(id);
    return known == m_notes.cend() ? std::nullopt : std::optional(*known);
}

void Annotations::apply(const PutNote &edit)
{
    remember(edit);
    m_notes.insert(edit.note.id, edit.note);
}

void Annotations::apply(const RemoveNote &edit)
{
    remember(edit);
    m_notes.remove(edit.id);
}

void Annotations::join(const QUuid &from, const QUuid &to)
{
    apply(Joined{from, to});
}

void Annotations::apply(const Joined &edit)
{
    remember(edit);
    const QStringList moved = m_tags.take(edit.from);
    for (const QString &tag : moved)
        putTag(m_tags[edit.to], tag);
    for (AppNote &note : m_notes) {
        if (note.appId == edit.from)
            note.appId = edit.to;
    }
}

} // namespace veltrix
