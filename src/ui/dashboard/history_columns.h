// SPDX-License-Identifier: GPL-3.0-or-later
// What an exported history has behind the own measurements: notes, and the ranks of competitors.
#pragma once

#include "model/rival_app.h"
#include "store/aso_store.h"

#include <QHash>
#include <QStringList>

namespace veltrix
{

/// Columns for the end of keywordHistory(), as the store is now. A value: rows may be extended on
/// any thread.
class HistoryColumns
{
public:
    /// For keywords of these apps.
    HistoryColumns(const ASOStore &store, const QList<QUuid> &appIds);

    /// `header` with the titles of the columns: notes, then a column a competitor.
    [[nodiscard]] QList<QStringList> titled(QList<QStringList> header) const;
    /// `rows` of a keyword's measurements, in their order, with the notes of the app's day and the
    /// ranks of its competitors; a cell is empty where nothing is known.
    [[nodiscard]] QList<QStringList> extended(QList<QStringList> rows,
                                              const TrackedKeyword &keyword,
                                              const std::vector<SharedSnapshot> &measurements,
                                              const std::vector<KeywordStandings> &standings) const;

private:
    [[nodiscard]] QString notesOf(QUuid appId, std::int64_t day) const;

    QHash<QUuid, QList<AppNote>> m_notes;
    std::vector<RivalApp> m_rivals;
};

} // namespace veltrix
