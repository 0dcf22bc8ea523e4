// SPDX-License-Identifier: GPL-3.0-or-later
// Which tags a keyword must have to be shown.
#pragma once

#include <QString>
#include <QStringList>

namespace veltrix
{

/// Keywords with any of the chosen tags, and those without a tag where they are chosen. Nothing
/// chosen shows all. Names that differ by case are one tag.
class TagFilter
{
public:
    static TagFilter only(const QString &tag);

    [[nodiscard]] bool showsAll() const { return m_folded.isEmpty() && !m_hasUntagged; }
    /// Those chosen, in the order in which they were.
    [[nodiscard]] const QStringList &tags() const { return m_tags; }
    [[nodiscard]] bool has(const QString &tag) const;
    [[nodiscard]] bool hasUntagged() const { return m_hasUntagged; }
    void set(const QString &tag, bool isChosen);
    void setUntagged(bool isChosen) { m_hasUntagged = isChosen; }
    /// Gives up the chosen tags that are none of these.
    void keepOnly(const QStringList &tags);

    /// `folded` are all tags of a keyword, each by foldedCase().
    [[nodiscard]] bool shows(const QStringList &folded) const;

    /// For a button: "All Tags", "core", "core +2".
    [[nodiscard]] QString title() const;
    /// All that are chosen, in words: "core, title".
    [[nodiscard]] QString sentence() const;
    /// What is said when no keyword passes: a heading, and a sentence. Not where all are shown.
    [[nodiscard]] QString nothingPassedTitle() const;
    [[nodiscard]] QString nothingPassedText() const;

    bool operator==(const TagFilter &) const = default;

private:
    QStringList m_tags;
    /// The same, folded.
    QStringList m_folded;
    bool m_hasUntagged = false;
};

} // namespace veltrix
