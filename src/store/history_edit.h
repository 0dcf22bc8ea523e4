// SPDX-License-Identifier: GPL-3.0-or-later
// What a change adds to the history beside the state file.
#pragma once

#include "model/app_note.h"
#include "model/keyword_standings.h"
#include "model/listing_change.h"

#include <QSet>
#include <QString>
#include <QUuid>

#include <optional>
#include <variant>
#include <vector>

namespace veltrix
{

/// An app that is watched: one of the user's own, or a competitor.
struct WatchedApp {
    /// An AppProfile or a TrackedCompetitor.
    QUuid id;
    /// What the results said of its listing; absent when it was not among them.
    std::optional<ListingFacts> facts;
};

/// Keeps what a measurement says of others, in the place of what the same UTC day had.
struct KeepStandings {
    KeywordStandings standings;
    /// Upper-cased code of the storefront that was searched.
    QString storefront;
    std::vector<WatchedApp> watched;
};

/// A competitor is tracked from this moment on.
struct BeginWatching {
    QUuid id;
    Date since;
};

/// Writes a note, or writes it anew.
struct PutNote {
    AppNote note;
};

struct RemoveNote {
    QUuid id;
};

struct SetTag {
    QUuid keywordId;
    QString tag;
    bool isOn = true;
};

/// Each can be done twice with the same outcome.
using HistoryEdit = std::variant<KeepStandings, BeginWatching, PutNote, RemoveNote, SetTag>;

/// Whether the user made it, so that it cannot be had again by measuring.
inline bool isOfTheUser(const HistoryEdit &edit)
{
    return !std::holds_alternative<KeepStandings>(edit);
}

/// What edits have changed, beside what the user did and knows.
struct AppliedEdits {
    /// Keywords with new standings.
    QSet<QUuid> keywords;
    /// Watched apps whose listings have changed, or which began to be watched.
    QSet<QUuid> listings;

    [[nodiscard]] bool isEmpty() const { return keywords.isEmpty() && listings.isEmpty(); }
};

/// The user's words about keywords and apps.
struct WrittenNotes {
    struct Tag {
        QUuid keywordId;
        QString name;
    };
    std::vector<Tag> tags;
    std::vector<AppNote> notes;
};

} // namespace veltrix
