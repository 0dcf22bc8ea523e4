// SPDX-License-Identifier: GPL-3.0-or-later
// What the window tells of measuring, whichever workspace it shows.
#pragma once

#include "effects/task_scope.h"
#include "store/keyword_refreshes.h"
#include "ui_kit/widgets/status_bar.h"

#include <QObject>

namespace veltrix
{

struct AdmissionStatus;

/// Decides what stands in the banner and in the status line, and does what their buttons say.
/// Knows no widget; whoever shows it follows changed().
class MeasuringStatus final : public QObject
{
    Q_OBJECT

public:
    /// `refreshes` outlives this.
    explicit MeasuringStatus(KeywordRefreshes &refreshes, QObject *parent = nullptr);
    ~MeasuringStatus() override;

    /// The app whose keywords are measured first.
    void setAppInView(std::optional<QUuid> appId);

    /// What went wrong last. Without a message nothing did.
    struct Problem {
        QString message;
        /// The keyword and the reason.
        QString detail;
        bool operator==(const Problem &) const = default;
    };
    [[nodiscard]] Problem problem() const;
    [[nodiscard]] std::optional<StatusBar::Work> work() const;
    /// False while a refresh runs that the user asked for. One that runs by itself is taken over.
    [[nodiscard]] bool mayRefresh() const { return !m_isRefreshing; }
    /// The line that says what was done.
    [[nodiscard]] const QString &message() const { return m_message; }
    [[nodiscard]] StatusBar::Tone tone() const { return m_tone; }
    [[nodiscard]] const QString &messageDetail() const { return m_messageDetail; }

    /// Says something, which stays until something else is said.
    void say(const QString &message, StatusBar::Tone tone = StatusBar::Tone::Normal,
             const QString &detail = QString());
    /// Says what is wrong while there is no app in view, until there is one.
    void sayWithoutApp(const QString &problem);
    /// Says what became of keywords that were to be added. A promise goes when measuring ends or
    /// fails, and leaves its detail.
    void say(const AdmissionStatus &status);

    /// Shows that something else is under way, such as an export, until it is told that nothing is.
    /// "Stop" means that, and what is measured meanwhile goes on.
    void showOtherWork(const std::optional<StatusBar::Work> &work);

    /// Measures what is stale; takes over a refresh that runs by itself.
    void refresh();
    /// Ends what work() tells: what else is under way, or everything that is being measured.
    void stop();

Q_SIGNALS:
    void changed();
    /// The user has asked for a refresh.
    void refreshRequested();
    /// That refresh has ended, unless it was stopped.
    void refreshEnded(const HistoryRefresh &end);
    /// The user wants nothing measured for now. Comes before anything is stopped.
    void stopRequested();
    /// The user wants to end what showOtherWork() has shown.
    void otherStopRequested();

private:
    Task<void> refreshAll(std::stop_token stop);
    void endPromise();

    KeywordRefreshes &m_refreshes;
    std::optional<QUuid> m_appInView;
    QString m_message;
    QString m_messageDetail;
    StatusBar::Tone m_tone = StatusBar::Tone::Normal;
    bool m_isPromise = false;
    bool m_waitsForApp = false;
    bool m_isRefreshing = false;
    std::optional<StatusBar::Work> m_otherWork;
    TaskScope m_tasks;
};

} // namespace veltrix
