// SPDX-License-Identifier: GPL-3.0-or-later
// What happened on a day beside ranks: notes of the user, and changes seen in listings. Pure.
#pragma once

#include "model/app_note.h"
#include "model/listing_change.h"

#include <QList>
#include <QString>

#include <vector>

namespace veltrix
{

/// One note or one change.
struct DayMark {
    enum class Kind { Note, Version, Name, Price, Icon };

    Kind kind = Kind::Note;
    /// The UTC day.
    std::int64_t day = 0;
    /// The line of the app it is about; see ComparedLine::key.
    std::int64_t line = 0;
    /// Short, to stand on the chart: "New subtitle", "Version 3.2".
    QString label;
    /// All of it: "New price: $1.99 to Free".
    QString text;
    /// The note's; null for a change.
    QUuid noteId;

    [[nodiscard]] bool isNote() const { return kind == Kind::Note; }
    /// The name of its symbol.
    [[nodiscard]] QString symbol() const;
    bool operator==(const DayMark &) const = default;
};

/// In the order given.
std::vector<DayMark> marksOfNotes(const QList<AppNote> &notes, std::int64_t line);

/// What changed for those who search in that storefront: versions and icons wherever they were
/// seen first, names and prices there alone. With `appName` marks say whose change it is; without,
/// it is the user's own app.
std::vector<DayMark> marksOfChanges(const std::vector<ListingChange> &changes,
                                    const QString &storefront, std::int64_t line,
                                    const QString &appName = QString());

/// By day; of one day notes first, then as they were.
void sortMarks(std::vector<DayMark> &marks);

} // namespace veltrix
