// SPDX-License-Identifier: GPL-3.0-or-later
// Tracking keywords of a researched app for the user's own, without its looks.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"
#include "ui/measuring/admission_texts.h"

#include <QObject>
#include <QSet>

namespace veltrix
{

/// Adds keywords to the user's app in one storefront and tells what became of it. The promise that
/// saved keywords are measured ends when measuring does.
class CoverageTracking final : public QObject
{
    Q_OBJECT

public:
    CoverageTracking(ASOStore &store, const QString &country, const std::optional<QUuid> &appId,
                     QObject *parent = nullptr);

    /// Another app of the user's: what became of the keywords of the one before is forgotten.
    void setApp(const std::optional<QUuid> &appId);
    /// The user has an app to track keywords for.
    [[nodiscard]] bool hasApp() const;
    /// The keywords that it has in the storefront.
    [[nodiscard]] QSet<QString> tracked() const;
    /// Does nothing without an app or without keywords.
    void track(const QStringList &keywords);

    /// What became of the keywords that were tracked last.
    struct Outcome {
        QString message;
        bool isProblem = false;
        /// The count and what was refused, one a line.
        QStringList lines;

        bool operator==(const Outcome &) const = default;
    };
    [[nodiscard]] const Outcome &outcome() const { return m_outcome; }

Q_SIGNALS:
    /// tracked() is another.
    void trackedChanged();
    void outcomeChanged();
    /// The message of the outcome holds no longer; its lines stay true.
    void promiseEnded();

private:
    void setOutcome(const KeywordAdmission &admission);
    /// Corrects the outcome, should the keywords not be saved.
    Task<void> followSave(KeywordAdmission admission, std::stop_token stop);
    void setOutcome(const Outcome &outcome, bool isPromise);
    void endPromise();

    ASOStore &m_store;
    QString m_country;
    std::optional<QUuid> m_appId;
    Outcome m_outcome;
    bool m_isPromise = false;
    TaskScope m_tasks;
};

} // namespace veltrix
