// SPDX-License-Identifier: GPL-3.0-or-later
// Gathers what is known of competitors' listings.
#pragma once

#include "store/aso_store.h"
#include "ui/suggestions/keyword_ideas.h"
#include "ui/suggestions/keyword_tracking.h"
#include "ui_kit/loading/loader.h"

#include <QObject>

namespace veltrix
{

/// The ideas out of the listings of one app's competitors. What is kept of searches is read without
/// a request; listings that are not known are read from the App Store when the user asks for it.
class RivalIdeas final : public QObject
{
    Q_OBJECT

public:
    /// Ideas that are shown at most.
    static constexpr qsizetype mostIdeas = 60;
    /// Kept searches that are looked at for listings.
    static constexpr qsizetype mostSearches = 200;

    /// The store outlives this.
    RivalIdeas(ASOStore &store, QUuid appId, QObject *parent = nullptr);

    /// Gathers what is kept.
    void start();
    /// Asks the App Store for the listings that are not known, one after the other.
    void readListings();
    /// Stops reading; what was read stays.
    void stopReading();

    /// What is known; gathering reads no network, so it does not fail.
    [[nodiscard]] bool isGathered() const { return m_gathered.state().value() != nullptr; }
    [[nodiscard]] const QList<KeywordIdea> &ideas() const { return m_ideas; }
    [[nodiscard]] qsizetype competitors() const { return m_rivals.size(); }
    /// Listings of which only the name is known.
    [[nodiscard]] qsizetype unread() const;
    [[nodiscard]] bool isReading() const { return m_reading.state().isUnderWay(); }
    /// "Reading the listing of Foxglove · 2 of 5" while it reads.
    [[nodiscard]] QString progressText() const;
    /// Why the listings could not be read, in words for the user; empty when nothing failed.
    [[nodiscard]] QString error() const { return m_reading.state().error(); }
    [[nodiscard]] KeywordTracking &tracking() { return m_tracking; }

Q_SIGNALS:
    void changed();

private:
    struct Rival {
        RivalListing known;
        bool isRead = false;
    };
    void findRivals();
    void update();
    void takeListing(const ITunesAppResult &app, const QString &country);
    void collectSuggested();
    Task<Done> gather(std::stop_token stop);
    Task<Done> read(std::stop_token stop);

    ASOStore &m_store;
    QUuid m_appId;
    KeywordTracking m_tracking;
    QList<Rival> m_rivals;
    IdeaEvidence m_evidence;
    QList<KeywordIdea> m_ideas;
    Loader<Done> m_gathered;
    Loader<Done> m_reading;
};

} // namespace veltrix
