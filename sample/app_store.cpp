// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store as its services see it.
#include "sample/app_store.h"

#include "sample/market.h"

#include <algorithm>
#include <utility>

namespace veltrix::sample
{

AppStore::AppStore(std::function<QDate()> today) : m_today(std::move(today)) {}

Records AppStore::search(const QString &term, const Storefront &storefront, int limit,
                         const QString &origin) const
{
    const RecordSetting setting{&storefront, today(), origin};
    auto apps = m_search.find(term, storefront, setting.day);
    apps.resize(std::min(apps.size(), static_cast<std::size_t>(std::max(limit, 0))));
    Records records;
    for (const SampleApp *app : apps)
        records.push_back(recordOf(*app, setting));
    return records;
}

Records AppStore::lookUp(const QList<qint64> &trackIds, const Storefront &storefront,
                         const QString &origin) const
{
    const RecordSetting setting{&storefront, today(), origin};
    Records records;
    for (const qint64 trackId : trackIds) {
        const SampleApp *app = m_catalog.find(trackId);
        if (app && isSold(*app, storefront, setting.day))
            records.push_back(recordOf(*app, setting));
    }
    return records;
}

} // namespace veltrix::sample
