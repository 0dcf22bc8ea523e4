// SPDX-License-Identifier: GPL-3.0-or-later
// Tracking keywords that were suggested, without its looks.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui/measuring/admission_texts.h"

#include <QObject>
#include <QSet>

#include <optional>
#include <utility>

namespace veltrix
{

/// Adds keywords to one app, in the storefront of each, has them measured, and tells what became of
/// them.
class KeywordTracking final : public QObject
{
    Q_OBJECT

public:
    /// The store outlives this.
    KeywordTracking(ASOStore &store, QUuid appId, QObject *parent = nullptr);

    void track(const QList<KeywordToTrack> &keywords);
    [[nodiscard]] bool isTracked(const QString &keyword, const QString &country) const;

    /// What became of the keywords that were tracked last; an empty message before.
    struct Outcome {
        QString message;
        bool isProblem = false;

        bool operator==(const Outcome &) const = default;
    };
    [[nodiscard]] const Outcome &outcome() const { return m_outcome; }

Q_SIGNALS:
    /// isTracked() is another for some keyword.
    void trackedChanged();
    void outcomeChanged();

private:
    void trackedIsAnother();
    void setOutcome(const KeywordAdmission &admission);
    /// Corrects the outcome, should the keywords not be saved.
    Task<void> followSave(KeywordAdmission admission, std::stop_token stop);

    ASOStore &m_store;
    QUuid m_appId;
    Outcome m_outcome;
    /// Storefront and folded text; empty until somebody asks.
    mutable std::optional<QSet<std::pair<QString, QString>>> m_tracked;
    TaskScope m_tasks;
};

} // namespace veltrix
