// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_cache.h"

namespace veltrix
{

namespace
{

Task<std::optional<SavedResults>> atOnce(std::optional<SavedResults> found)
{
    co_return found;
}

} // namespace

QString rankedAppsKey(const QString &keyword, const QString &country)
{
    return country.toUpper() + u':' + keyword.trimmed().toLower();
}

RankedAppsCache::RankedAppsCache(Arguments arguments, std::shared_ptr<Clock> clock)
    : m_path(arguments.path), m_files(m_path.isEmpty() ? nullptr : std::move(arguments.files)),
      m_clock(std::move(clock)),
      m_archive(std::make_shared<RankedAppsArchive>(m_path, arguments.lock, arguments.limits))
{
}

RankedAppsCache::~RankedAppsCache()
{
    if (m_files)
        m_files->save(m_path, [archive = m_archive, now = m_clock->now()] {
            archive->save(now);
            archive->finish(now);
        });
}

Task<std::optional<SavedResults>> RankedAppsCache::find(QString key, std::stop_token stop)
{
    const Date now = m_clock->now();
    if (!m_files)
        return atOnce(m_archive->find(key, now));
    std::function<std::optional<SavedResults>()> work = [archive = m_archive, key, now] {
        return archive->find(key, now);
    };
    auto found = m_files->run(std::move(work), std::move(stop));
    // A file of an older version may hold more than it should.
    save();
    return found;
}

void RankedAppsCache::keep(const QString &key, const SavedResults &saved, Seconds remembered)
{
    const Date now = m_clock->now();
    if (!m_files) {
        m_archive->keep(key, saved, remembered, now);
        m_archive->save(now);
        return;
    }
    m_files->start([archive = m_archive, key, saved, remembered, now] {
        archive->keep(key, saved, remembered, now);
    });
    save();
}

void RankedAppsCache::save()
{
    m_files->save(m_path, [archive = m_archive, now = m_clock->now()] { archive->save(now); });
}

} // namespace veltrix
