// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/listing_watch.h"

#include <algorithm>
#include <array>

namespace veltrix
{

namespace
{

struct WatchedFact {
    ListingChangeKind kind;
    std::optional<QString> ListingFacts::*fact;
};

constexpr std::array watchedFacts{
    WatchedFact{ListingChangeKind::Name, &ListingFacts::name},
    WatchedFact{ListingChangeKind::Version, &ListingFacts::version},
    WatchedFact{ListingChangeKind::Price, &ListingFacts::price},
    WatchedFact{ListingChangeKind::Icon, &ListingFacts::icon},
};

std::optional<QString> saying(const std::optional<QString> &text)
{
    if (!text || text->trimmed().isEmpty())
        return std::nullopt;
    return text->trimmed();
}

/// "https://is1-ssl.example/image/thumb/…/AppIcon.png/100x100bb.jpg" without the server, which
/// changes from answer to answer, and without the last part, which is the size.
QString pictureOf(const QString &address)
{
    const QString path = address.section(u'/', 3);
    const qsizetype end = path.lastIndexOf(u'/');
    return end > 0 ? path.first(end) : address;
}

bool areSame(ListingChangeKind kind, const QString &one, const QString &other)
{
    return kind == ListingChangeKind::Icon ? pictureOf(one) == pictureOf(other) : one == other;
}

} // namespace

ListingFacts listingFacts(const ITunesAppResult &result)
{
    const auto icon = iconUrl(result);
    return {saying(result.trackName), saying(result.version), saying(result.formattedPrice),
            icon ? std::optional(icon->text()) : std::nullopt};
}

ListingWatch::ListingWatch(QHash<QString, ListingFacts> seen, std::vector<ListingChange> changes)
    : m_seen(std::move(seen)), m_changes(std::move(changes))
{
}

std::vector<ListingChange> ListingWatch::see(const ListingFacts &facts, const QString &storefront,
                                             Date now)
{
    ListingFacts &known = m_seen[storefront];
    std::vector<ListingChange> changes;
    for (const auto &[kind, fact] : watchedFacts) {
        const auto &later = facts.*fact;
        auto &earlier = known.*fact;
        if (!later || (earlier && areSame(kind, *later, *earlier)))
            continue;
        if (earlier) {
            ListingChange change{kind, now, storefront, *earlier, *later};
            if (isOldAnswer(change))
                continue;
            if (!isToldAlready(change))
                changes.push_back(std::move(change));
        }
        earlier = later;
    }
    m_changes.insert(m_changes.end(), changes.begin(), changes.end());
    return changes;
}

/// It would take back what has changed a moment ago.
bool ListingWatch::isOldAnswer(const ListingChange &change) const
{
    return std::ranges::any_of(m_changes, [&](const ListingChange &told) {
        const bool isOfOneStorefront =
            change.kind != ListingChangeKind::Price || told.storefront == change.storefront;
        return isOfOneStorefront && told.kind == change.kind &&
               areSame(change.kind, told.earlier, change.later) &&
               areSame(change.kind, told.later, change.earlier) &&
               change.seenAt - told.seenAt < staleAnswers;
    });
}

/// Another storefront has shown it, and it has not changed since.
bool ListingWatch::isToldAlready(const ListingChange &change) const
{
    if (change.kind == ListingChangeKind::Price)
        return false;
    const auto told =
        std::ranges::find(m_changes.rbegin(), m_changes.rend(), change.kind, &ListingChange::kind);
    return told != m_changes.rend() && areSame(change.kind, told->later, change.later);
}

} // namespace veltrix
