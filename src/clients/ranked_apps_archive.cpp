// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/ranked_apps_archive.h"

#include "effects/atomic_file.h"
#include "effects/data_folder_lock.h"
#include "json/json_reader.h"
#include "json/json_writer.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace veltrix
{

namespace
{

/// How far ahead of the clock a date may lie that counts as new.
constexpr Seconds clockTolerance{300};

/// Bytes of the file that an entry takes, with what stands around it.
qint64 sizeOf(const QString &key, const QByteArray &json)
{
    JsonWriter writer;
    writer.string(key);
    return writer.size() + json.size() + 2;
}

} // namespace

RankedAppsArchive::RankedAppsArchive(QString path, DataFolderLock *lock, RankedAppsLimits limits)
    : m_path(std::move(path)), m_lock(lock), m_limits(limits),
      m_database(QFileInfo(m_path).path() + QStringLiteral("/caches.sqlite"), limits.databaseBytes)
{
}

void RankedAppsArchive::load(Date now)
{
    if (std::exchange(m_isLoaded, true) || m_path.isEmpty())
        return;
    try {
        const auto read = fromJson<std::map<QString, SavedResults>>(readWholeFile(m_path),
                                                                    ListLimit{mostRankedApps});
        for (const auto &[key, saved] : read) {
            if (now - saved.fetchedAt < rankedAppsLifetime)
                m_entries.emplace(key, Entry{saved.fetchedAt, toJson(saved), true, false});
        }
    } catch (const Error &) {
        m_entries.clear();
    }
    m_isChanged = isTooMuch();
}

std::optional<SavedResults> RankedAppsArchive::find(const QString &key, Date now)
{
    load(now);
    const auto entry = m_entries.find(key);
    const bool isKnown = entry != m_entries.end();
    if (isKnown && !entry->second.isFromFile)
        return fromJson<SavedResults>(entry->second.json);
    if (!m_path.isEmpty()) {
        auto row = m_database.find(key);
        if (row && now - row->fetchedAt < rankedAppsLifetime &&
            (!isKnown || row->fetchedAt > entry->second.fetchedAt))
            return row;
    }
    if (isKnown)
        return fromJson<SavedResults>(entry->second.json);
    return std::nullopt;
}

void RankedAppsArchive::keep(const QString &key, const SavedResults &saved, Seconds remembered,
                             Date now)
{
    load(now);
    if (remembered > Seconds::zero()) {
        const auto known = find(key, now);
        const Seconds age = known ? now - known->fetchedAt : remembered;
        if (age >= Seconds::zero() && age < remembered && known->results == saved.results)
            return;
    }
    try {
        m_entries.insert_or_assign(key, Entry{saved.fetchedAt, toJson(saved)});
        m_isChanged = true;
    } catch (const EncodingError &) {
        // A date or a figure that no file can hold.
    }
}

void RankedAppsArchive::save(Date now)
{
    load(now);
    const Entries excess = takeExcess(now);
    if (!m_isChanged || !mayWrite())
        return;
    QDir().mkpath(QFileInfo(m_path).path());
    const bool isRecent = m_written && now >= *m_written && now - *m_written < m_limits.filePause;
    const bool usesDatabase = m_database.exists() || !excess.empty();
    if (!usesDatabase || !saveRows(excess, now) || !isRecent)
        writeFile(now);
}

void RankedAppsArchive::finish(Date now)
{
    if (m_isChanged && mayWrite())
        writeFile(now);
}

bool RankedAppsArchive::mayWrite() const
{
    return !m_path.isEmpty() &&
           (!m_lock || m_lock->acquire() != DataFolderLock::Outcome::HeldByAnother);
}

bool RankedAppsArchive::isTooMuch() const
{
    qint64 bytes = 2;
    for (const auto &[key, entry] : m_entries)
        bytes += sizeOf(key, entry.json);
    return qsizetype(m_entries.size()) > m_limits.entries || bytes > m_limits.bytes;
}

RankedAppsArchive::Entries RankedAppsArchive::takeExcess(Date now)
{
    Entries excess;
    if (!isTooMuch())
        return excess;
    std::vector<Entries::iterator> newestFirst;
    for (auto entry = m_entries.begin(); entry != m_entries.end(); ++entry)
        newestFirst.push_back(entry);
    // What a wrong clock has dated would stay the newest for good.
    const auto age = [now](const Entries::iterator &entry) {
        const Seconds since = now - entry->second.fetchedAt;
        return since < -clockTolerance ? Seconds::max() : since;
    };
    std::ranges::stable_sort(newestFirst, {}, age);
    qint64 bytes = 2;
    qsizetype count = 0;
    for (const Entries::iterator &entry : newestFirst) {
        const qint64 size = sizeOf(entry->first, entry->second.json);
        if (count < m_limits.entries && bytes + size <= m_limits.bytes) {
            bytes += size;
            ++count;
        } else {
            excess.insert(m_entries.extract(entry));
        }
    }
    return excess;
}

bool RankedAppsArchive::saveRows(const Entries &excess, Date now)
{
    // One that was given up has none of what it had.
    if (!m_database.exists()) {
        for (auto &[key, entry] : m_entries)
            entry.isInDatabase = false;
    }
    std::vector<RankedAppsDatabase::Row> rows;
    for (const Entries *entries : {&excess, &std::as_const(m_entries)}) {
        for (const auto &[key, entry] : *entries) {
            if (!entry.isInDatabase)
                rows.push_back({key, fromJson<SavedResults>(entry.json)});
        }
    }
    if (rows.empty())
        return true;
    // Not once more in vain: what cannot be used was removed by the first attempt.
    bool isInserted = m_database.insert(rows, now);
    if (!isInserted && !m_database.exists())
        isInserted = m_database.insert(rows, now);
    for (auto &[key, entry] : m_entries)
        entry.isInDatabase = isInserted;
    return isInserted;
}

void RankedAppsArchive::writeFile(Date now)
{
    JsonWriter writer;
    writer.put('{');
    for (const auto &[key, entry] : m_entries) {
        if (writer.size() > 1)
            writer.put(',');
        writer.string(key);
        writer.put(':');
        writer.raw({entry.json.constData(), size_t(entry.json.size())});
    }
    writer.put('}');
    try {
        writeCacheFile(m_path, writer.take());
        m_isChanged = false;
        m_written = now;
    } catch (const FileError &) {
        // What is in memory stays; the next success tries again.
    }
}

} // namespace veltrix
