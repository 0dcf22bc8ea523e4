// SPDX-License-Identifier: GPL-3.0-or-later
// The user's tags and notes, in memory.
#pragma once

#include "store/history_edit.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <optional>
#include <vector>

namespace veltrix
{

/// Tags of keywords and notes on apps. They can be changed before those of the history were read:
/// what was done since counts then. Of what was removed they stay, for the undo.
class Annotations
{
public:
    /// Keywords with tags and apps with notes.
    struct News {
        QSet<QUuid> keywords;
        QSet<QUuid> apps;
    };
    /// Takes what the history has, and says of what it has something.
    News adopt(const WrittenNotes &written);
    [[nodiscard]] bool areRead() const { return m_areRead; }

    /// Sorted, each once ignoring case.
    [[nodiscard]] QStringList tags(const QUuid &keywordId) const { return m_tags.value(keywordId); }
    /// The edit that puts a usable name on a keyword or takes it off; none when it changes nothing.
    /// A name keeps the form in which it was written first.
    [[nodiscard]] std::optional<SetTag> tagEdit(const QUuid &keywordId, const QString &tag,
                                                bool isOn) const;
    void apply(const SetTag &edit);
    /// Puts a name where it belongs in a sorted list, unless the list has it ignoring case.
    static void putTag(QStringList &tags, const QString &name);

    /// By their days and then as they were written.
    [[nodiscard]] QList<AppNote> notes(const QUuid &appId) const;
    [[nodiscard]] std::optional<AppNote> note(const QUuid &id) const;
    void apply(const PutNote &edit);
    void apply(const RemoveNote &edit);

    /// What a keyword or an app had is another's.
    void join(const QUuid &from, const QUuid &to);

private:
    struct Joined {
        QUuid from;
        QUuid to;
    };
    template <class Edit>
    void remember(const Edit &edit);
    void apply(const Joined &edit);

    QHash<QUuid, QStringList> m_tags;
    /// By the folded name.
    QHash<QString, QString> m_forms;
    QHash<QUuid, AppNote> m_notes;
    bool m_areRead = false;
    /// What was done before they were read.
    std::vector<std::variant<SetTag, PutNote, RemoveNote, Joined>> m_earlier;
};

} // namespace veltrix
