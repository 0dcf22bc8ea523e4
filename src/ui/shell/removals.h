// SPDX-License-Identifier: GPL-3.0-or-later
// What was removed or tagged in this run and can be undone.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui/dashboard/tag_change.h"

#include <QObject>

#include <deque>
#include <variant>

namespace veltrix
{

/// Follows the store's removals, is told of changed tags, and undoes both, the newest first. For a
/// while after each it has a line that says what was done, to offer undoing it.
class Removals final : public QObject
{
    Q_OBJECT

public:
    /// How long the line stands.
    static constexpr Seconds offerTime{10};
    /// Steps that are kept; older ones are forgotten.
    static constexpr size_t mostKept = 50;

    /// `store` outlives this.
    explicit Removals(ASOStore &store, QObject *parent = nullptr);
    ~Removals() override;

    /// Tags that the user has changed.
    void keepTags(const TagChange &change);

    /// "Removed 12 keywords" while that is offered to be undone; empty otherwise.
    [[nodiscard]] const QString &offer() const { return m_offer; }
    [[nodiscard]] bool canUndo() const { return !m_steps.empty(); }
    /// Undoes what was done last. Keywords that were never measured are measured.
    void undo();

Q_SIGNALS:
    void offerChanged();
    /// What is there again, in words, and the app that it belongs to where one is to be shown.
    void undone(const QString &text, std::optional<QUuid> appId);
    void failed(const QString &problem);

private:
    using Step = std::variant<RemovedTracking, TagChange>;

    void keep(Step step, const QString &offer);
    void restore(RemovedTracking removed);
    void restore(const TagChange &change);
    void setOffer(const QString &offer);
    Task<void> endOffer(quint64 number, std::stop_token stop);

    ASOStore &m_store;
    std::deque<Step> m_steps;
    QString m_offer;
    /// Of the step that is offered.
    quint64 m_number = 0;
    TaskScope m_tasks;
};

} // namespace veltrix
