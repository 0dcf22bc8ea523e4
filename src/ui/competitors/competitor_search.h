// SPDX-License-Identifier: GPL-3.0-or-later
// The search for any App Store app, without its looks.
#pragma once

#include "store/aso_store.h"
#include "ui_kit/loading/loader.h"

namespace veltrix
{

/// A new search stops the one before. Results stay on screen while all of them are fetched.
class CompetitorSearch final : public QObject
{
    Q_OBJECT

public:
    /// Results asked for at first, and when the user wants to see all.
    static constexpr std::int64_t firstLimit = 20;
    static constexpr std::int64_t fullLimit = 100;

    explicit CompetitorSearch(ASOStore &store, QObject *parent = nullptr);

    /// The storefront of searches; another one searches the last text again.
    void setCountry(const QString &country);
    /// Searches a trimmed text; an empty one clears what was found.
    void submit(const QString &term);
    /// The last search again.
    void retry();
    /// The last search with fullLimit.
    void showAll();

    [[nodiscard]] const Loadable<QList<ITunesAppResult>> &state() const { return m_found.state(); }
    [[nodiscard]] QList<ITunesAppResult> results() const;
    /// Empty when nothing is searched.
    [[nodiscard]] const QString &term() const { return m_term; }
    [[nodiscard]] const QString &country() const { return m_country; }

    /// "20 results for “camera” in United States", or the search while nothing is found.
    [[nodiscard]] QString title() const;
    enum class ShowAll { Hidden, Offered, UnderWay };
    /// All results may be asked for: fewer were than there may be.
    [[nodiscard]] ShowAll showAllState() const;
    /// What went wrong over the results that are there; empty when nothing did.
    [[nodiscard]] QString problem() const;

Q_SIGNALS:
    void changed();

private:
    void search();

    ASOStore &m_store;
    QString m_term;
    QString m_country;
    std::int64_t m_limit = firstLimit;
    Loader<QList<ITunesAppResult>> m_found;
};

} // namespace veltrix
