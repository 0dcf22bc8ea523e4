// SPDX-License-Identifier: GPL-3.0-or-later
// The notes of one app as the user writes, changes and removes them.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"

#include <QObject>

namespace veltrix
{

/// Writes through to the store, and offers for a while to undo what was removed, as the window does
/// it for what is tracked.
class HistoryNotes final : public QObject
{
    Q_OBJECT

public:
    /// How long the offer stands.
    static constexpr Seconds offerTime{10};

    /// `store` outlives this.
    HistoryNotes(ASOStore &store, QUuid appId, QObject *parent = nullptr);
    ~HistoryNotes() override;

    [[nodiscard]] QList<AppNote> all() const { return m_store.notes(m_appId); }
    [[nodiscard]] std::optional<AppNote> note(QUuid id) const;
    /// One that is not written yet.
    [[nodiscard]] AppNote newNote(std::int64_t day) const;
    /// Throws StoreError when it cannot be a note.
    void save(AppNote note);
    void remove(QUuid id);
    /// Puts back what was removed last.
    void undo();
    [[nodiscard]] bool canUndo() const { return !m_removed.empty(); }
    /// "Removed “New subtitle”" while that is offered to be undone; empty otherwise.
    [[nodiscard]] const QString &offer() const { return m_offer; }

Q_SIGNALS:
    void changed();
    void offerChanged();
    void failed(const QString &problem);

private:
    void setOffer(const QString &offer);
    Task<void> endOffer(quint64 number, std::stop_token stop);

    ASOStore &m_store;
    QUuid m_appId;
    std::vector<AppNote> m_removed;
    QString m_offer;
    /// Of the removal that is offered.
    quint64 m_number = 0;
    TaskScope m_tasks;
};

} // namespace veltrix
