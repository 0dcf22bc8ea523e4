// SPDX-License-Identifier: GPL-3.0-or-later
// Finds apps like the researched one, through the search for its first listing phrase.
#pragma once

#include "store/aso_store.h"
#include "ui_kit/loading/loader.h"

namespace veltrix
{

/// The apps like one app: best first, without that app itself.
class SimilarApps final : public QObject
{
    Q_OBJECT

public:
    /// Results asked for.
    static constexpr std::int64_t searchLimit = 25;
    /// Apps shown.
    static constexpr qsizetype shownLimit = 10;

    explicit SimilarApps(ASOStore &store, QObject *parent = nullptr);

    /// Searches afresh.
    void start(const ITunesAppResult &app, const QString &country);
    /// The same search again.
    void retry();

    [[nodiscard]] const Loadable<QList<ITunesAppResult>> &state() const { return m_apps.state(); }

    /// What is searched: the app's first listing phrase, else its genre; empty when it has neither.
    static QString termFor(const ITunesAppResult &app);

Q_SIGNALS:
    void changed();

private:
    Task<QList<ITunesAppResult>> search(ITunesAppResult app, QString country, std::stop_token stop);

    ASOStore &m_store;
    Loader<QList<ITunesAppResult>> m_apps;
};

} // namespace veltrix
