// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ranked_apps_adapter.h"

namespace veltrix
{

std::optional<SavedRankedApps> RankedAppsAdapter::savedRankedApps(QString keyword,
                                                                  QString country) const
{
    const auto saved = m_client->savedResults(keyword, country);
    if (!saved)
        return std::nullopt;
    return SavedRankedApps{saved->fetchedAt, saved->results};
}

} // namespace veltrix
