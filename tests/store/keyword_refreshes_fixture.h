// SPDX-License-Identifier: GPL-3.0-or-later
// Three keywords that are measured in all the ways there are.
#pragma once

#include "store/store_fixture.h"

namespace veltrix
{

inline constexpr Seconds hour{3600};
inline const QString historyFailure = text("Some rankings couldn't be updated. Try again later.");
inline const QString queueFailure =
    text("Keywords are saved. Metrics couldn't be loaded; use Refresh to retry.");

class KeywordRefreshesTest : public StoreTest
{
protected:
    void addThree()
    {
        for (const char *name : {"moon", "tide", "harbour"})
            keywords.append(addKeyword(name));
    }
    KeywordRefreshes &refreshes() { return store->refreshes(); }
    Outcome<HistoryRefresh> refreshStale(std::optional<QUuid> first = {})
    {
        return Outcome<HistoryRefresh>(refreshes().refreshStale(first, view.get_token()));
    }
    Outcome<Done> refreshRows(const QList<TrackedKeyword> &rows, const std::stop_source &whose,
                              KeywordRefreshes::Rows how = {})
    {
        for (const TrackedKeyword &row : rows)
            how.ids.append(row.id);
        const auto ended = [this](const TrackedKeyword &keyword,
                                  const std::optional<QString> &problem) {
            told.append(keyword.keyword + text(": ") + problem.value_or(text("measured")));
        };
        return Outcome<Done>(finished(refreshes().refreshRows(how, ended, whose.get_token())));
    }
    /// The terms searched since the last call.
    QStringList searched()
    {
        QStringList terms;
        for (const QString &search : std::exchange(client->searches, {}))
            terms.append(search.section(u'/', 0, 0));
        return terms;
    }
    /// "1 of 3, moon", or "idle".
    [[nodiscard]] QString progress() const
    {
        const RefreshProgress &now = store->refreshProgress();
        if (now.isIdle())
            return text("idle");
        return QStringLiteral("%1 of %2, %3")
            .arg(now.done + 1)
            .arg(now.total())
            .arg(now.current ? now.current->keyword : text("-"));
    }
    void failAt(const QStringList &terms)
    {
        client->fails = [terms](const QString &term) {
            return terms.contains(term);
        };
    }

    QList<TrackedKeyword> keywords;
    QStringList told;
};

} // namespace veltrix
