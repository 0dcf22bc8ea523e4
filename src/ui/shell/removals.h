// SPDX-License-Identifier: GPL-3.0-or-later
// What was removed in this run and can be put back.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"

#include <QObject>

#include <deque>

namespace veltrix
{

/// Follows the store's removals, and undoes them, the newest first. For a while after each it has a
/// line that says what was removed, to offer undoing it.
class Removals final : public QObject
{
    Q_OBJECT

public:
    /// How long the line stands.
    static constexpr Seconds offerTime{10};
    /// Removals that are kept; older ones are forgotten.
    static constexpr size_t mostKept = 50;

    /// `store` outlives this.
    explicit Removals(ASOStore &store, QObject *parent = nullptr);
    ~Removals() override;

    /// "Removed 12 keywords" while that is offered to be undone; empty otherwise.
    [[nodiscard]] const QString &offer() const { return m_offer; }
    [[nodiscard]] bool canUndo() const { return !m_removed.empty(); }
    /// Puts back what was removed last. Keywords that were never measured are measured.
    void undo();

Q_SIGNALS:
    void offerChanged();
    /// What is there again, in words, and the app that it belongs to where one is to be shown.
    void undone(const QString &text, std::optional<QUuid> appId);
    void failed(const QString &problem);

private:
    void keep(const RemovedTracking &removed);
    void setOffer(const QString &offer);
    Task<void> endOffer(quint64 number, std::stop_token stop);

    ASOStore &m_store;
    std::deque<RemovedTracking> m_removed;
    QString m_offer;
    /// Of the removal that is offered.
    quint64 m_number = 0;
    TaskScope m_tasks;
};

} // namespace veltrix
