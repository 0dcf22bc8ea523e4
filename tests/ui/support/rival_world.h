// SPDX-License-Identifier: GPL-3.0-or-later
// A world in which keywords are measured day by day beside a competitor whose listing changes.
#pragma once

#include "ui/support/research_world.h"

namespace veltrix
{

/// Where the user's app and Foxglove stand for a keyword; 0 is not among the results.
struct RivalRanks {
    const char *keyword;
    const char *country;
    int own;
    int theirs;
};

/// One app with eleven keywords that were never measured, on Aug 21, 2026. Nothing is tracked yet.
class RivalWorld final : public ResearchWorld
{
public:
    /// `keywords` are what is tracked, and where both stand at first.
    explicit RivalWorld(std::vector<RivalRanks> keywords = shownKeywords());

    /// The store again, from what it saved.
    void restart();
    /// Puts something unreadable in the place of the history.
    void damageHistory();

    /// Tracks Foxglove as it is listed now.
    void track(const char *country = "US");
    void untrack();
    /// Goes on to noon of that day of 2026.
    void goTo(int month, int day);
    /// The searches for that keyword find both there from now on.
    void rank(const RivalRanks &ranks);
    void measure(const char *keyword, const char *country = "US");
    void measureAll();
    [[nodiscard]] QUuid idOf(const char *keyword, const char *country = "US") const;
    using ResearchWorld::row;
    [[nodiscard]] DashboardKeywordRow row(const char *keyword, const char *country) const;

    /// From the tracking of Foxglove on Aug 21 to Nov 22, with everything that its listing went
    /// through.
    void playThreeMonths();

    static std::vector<RivalRanks> shownKeywords();

    /// Foxglove as searches and look-ups find it.
    ITunesAppResult rival;

private:
    struct Played {
        QByteArray state;
        QByteArray history;
        ITunesAppResult rival;
        std::vector<RivalRanks> ranks;
    };

    void list();
    void takeUp(const Played &played);
    [[nodiscard]] QString statePath() const
    {
        return folder.filePath(QStringLiteral("state.json"));
    }
    [[nodiscard]] QString historyPath() const
    {
        return folder.filePath(QStringLiteral("history.sqlite"));
    }

    std::vector<RivalRanks> m_ranks;
};

} // namespace veltrix
