// SPDX-License-Identifier: GPL-3.0-or-later
// Finds apps like the researched one, through the search for its first listing phrase.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"

#include <QObject>

namespace veltrix
{

class SimilarApps final : public QObject
{
    Q_OBJECT

public:
    /// Results asked for.
    static constexpr std::int64_t searchLimit = 25;
    /// Apps shown.
    static constexpr qsizetype shownLimit = 10;

    enum class Phase { Idle, Searching, Failed, Found };

    explicit SimilarApps(ASOStore &store, QObject *parent = nullptr);
    ~SimilarApps() override;

    /// Searches afresh.
    void start(const ITunesAppResult &app, const QString &country);
    /// The same search again.
    void retry();

    [[nodiscard]] Phase phase() const { return m_phase; }
    /// Best first, without the researched app.
    [[nodiscard]] const QList<ITunesAppResult> &apps() const { return m_apps; }
    [[nodiscard]] const QString &error() const { return m_error; }

    /// What is searched: the app's first listing phrase, else its genre; empty when it has neither.
    static QString termFor(const ITunesAppResult &app);

Q_SIGNALS:
    void changed();
    /// The search has ended, whichever way.
    void settled();

private:
    Task<void> search(QString term, std::stop_token stop);

    ASOStore &m_store;
    ITunesAppResult m_app;
    QString m_country;
    Phase m_phase = Phase::Idle;
    QList<ITunesAppResult> m_apps;
    QString m_error;
    TaskScope m_tasks;
};

} // namespace veltrix
