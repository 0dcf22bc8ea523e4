// SPDX-License-Identifier: GPL-3.0-or-later
// The search for any App Store app, without its looks.
#pragma once

#include "effects/task_scope.h"
#include "store/aso_store.h"

#include <QObject>

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

    struct State {
        bool isLoading = false;
        /// A search has ended.
        bool hasSearched = false;
        /// All results were asked for.
        bool showsFullResults = false;
        QList<ITunesAppResult> results;
        std::optional<QString> error;
        QString lastSearchTerm;
        QString country;

        /// Fewer were asked for than there may be.
        [[nodiscard]] bool mayHaveMore() const
        {
            return !showsFullResults && !isLoading && results.size() >= firstLimit;
        }
        bool operator==(const State &) const = default;
    };

    explicit CompetitorSearch(ASOStore &store, QObject *parent = nullptr);
    ~CompetitorSearch() override;

    /// Searches a trimmed text; an empty one clears what was found.
    void submit(QString term, QString country);
    /// The last search again.
    void retry();
    /// The last search with fullLimit.
    void showAll();
    void clear();

    [[nodiscard]] const State &state() const { return m_state; }

Q_SIGNALS:
    void changed();

private:
    void run();
    Task<void> search(std::int64_t limit, std::stop_token stop);

    ASOStore &m_store;
    State m_state;
    TaskScope m_tasks;
};

} // namespace veltrix
