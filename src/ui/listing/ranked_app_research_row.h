// SPDX-License-Identifier: GPL-3.0-or-later
// One of the apps that rank for a keyword.
#pragma once

#include "ui/listing/research_context.h"
#include "ui_kit/widgets/research_app_row.h"

#include <QUuid>

namespace veltrix
{

class TrackCompetitorButton;

/// Identifies the app whose details are open.
struct AppDetailSelection {
    std::int64_t trackId = 0;
    QString country;
    /// The user's app, if one is selected.
    std::optional<QUuid> appId;

    bool operator==(const AppDetailSelection &) const = default;
};

/// Rank, icon, name, rating and "Track competitor"; choosing the row asks for the app's details.
class RankedAppResearchRow final : public ResearchAppRow
{
    Q_OBJECT

public:
    RankedAppResearchRow(const ResearchContext &context, int rank, const ITunesAppResult &result,
                         const QString &country, const std::optional<QUuid> &appId,
                         QWidget *parent = nullptr);

    /// Another app has this rank now.
    void setResult(const ITunesAppResult &result);

Q_SIGNALS:
    /// Not sent for a result without an id: it has no details.
    void detailsRequested(const AppDetailSelection &selection);

protected:
    [[nodiscard]] QString openText() const override;

private:
    QString m_country;
    std::optional<QUuid> m_appId;
    TrackCompetitorButton *m_track;
};

} // namespace veltrix
