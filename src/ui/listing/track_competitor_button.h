// SPDX-License-Identifier: GPL-3.0-or-later
// The button that makes an app a tracked competitor.
#pragma once

#include "store/aso_store.h"
#include "ui_kit/widgets/button.h"

namespace veltrix
{

/// Follows the store: "Track competitor" becomes, by the kind of the button, "Tracking competitor"
/// or the way back, "Untrack competitor", which is no main action. Hidden without an app of the
/// user's and for that app itself.
class TrackCompetitorButton final : public Button
{
    Q_OBJECT

public:
    enum class WhenTracked {
        /// Says so and does nothing more.
        Confirms,
        /// Removes the competitor again.
        Untracks,
    };

    TrackCompetitorButton(ASOStore &store, Kind kind, WhenTracked whenTracked,
                          QWidget *parent = nullptr);

    /// The app that the button is about, in that storefront, for that app of the user's.
    void setApp(const ITunesAppResult &app, const QString &country,
                const std::optional<QUuid> &appId);
    [[nodiscard]] bool isTracked() const;

private:
    void showState();
    void toggle();

    ASOStore &m_store;
    /// While the app is not tracked.
    Kind m_kindToTrack;
    WhenTracked m_whenTracked;
    ITunesAppResult m_app;
    QString m_country;
    std::optional<QUuid> m_appId;
};

} // namespace veltrix
