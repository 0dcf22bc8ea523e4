// SPDX-License-Identifier: GPL-3.0-or-later
// Beside the user's own ranks: where others stood, what has changed in listings, tags and notes.
#include "store/aso_store.h"

#include "model/tag_name.h"
#include "model/text_folding.h"
#include "store/listing_watch.h"
#include "store/standing_records.h"

#include <algorithm>

namespace veltrix
{

namespace
{

const ITunesAppResult *resultOf(const QList<ITunesAppResult> &results, std::int64_t trackId)
{
    const auto found =
        std::ranges::find(results, std::optional(trackId), &ITunesAppResult::trackId);
    return found == results.cend() ? nullptr : &*found;
}

} // namespace

KeepStandings ASOStore::standingsEdit(const KeywordSnapshot &snapshot,
                                      const TrackedKeyword &keyword,
                                      const QList<ITunesAppResult> &results) const
{
    const QList<TrackedCompetitor> rivals = competitorsOfApp(keyword.appId);
    KeepStandings edit{standingsOf(snapshot, results, rivals), keyword.country, {}};
    const auto watch = [&](const QUuid &id, std::int64_t trackId) {
        WatchedApp watched{id, std::nullopt};
        if (const ITunesAppResult *result = resultOf(results, trackId))
            watched.facts = listingFacts(*result);
        edit.watched.push_back(std::move(watched));
    };
    if (const auto owner = app(keyword.appId))
        watch(owner->id, owner->trackId);
    for (const TrackedCompetitor &rival : rivals)
        watch(rival.id, rival.trackId);
    return edit;
}

Task<std::vector<KeywordStandings>> ASOStore::standings(QUuid keywordId,
                                                        std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (!m_saver.hasHistory())
        co_return std::vector<KeywordStandings>();
    auto found = co_await m_saver.standings(keywordId, stop);
    const Date now = m_clock->now();
    std::erase_if(found, [=](const KeywordStandings &standings) {
        return SnapshotIndex::liesAhead(standings.fetchedAt, now);
    });
    co_return found;
}

Task<std::vector<KeywordStandings>> ASOStore::newestStandings(QUuid appId,
                                                              std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (!m_saver.hasHistory())
        co_return std::vector<KeywordStandings>();
    std::vector<QUuid> ids;
    for (const TrackedKeyword &keyword : m_keywords.all()) {
        if (keyword.appId == appId)
            ids.push_back(keyword.id);
    }
    const Date latest = m_clock->now() + SnapshotIndex::clockTolerance;
    co_return co_await m_saver.newestStandings(std::move(ids), latest, stop);
}

Task<ListingHistory> ASOStore::listingHistory(QUuid appId, std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (!m_saver.hasHistory())
        co_return ListingHistory();
    co_return co_await m_saver.listingHistory(appId, stop);
}

Task<void> ASOStore::readWrittenNotes(std::stop_token stop)
{
    while (isStateRead() && !m_annotations.areRead()) {
        try {
            WrittenNotes written;
            if (m_saver.hasHistory())
                written = co_await m_saver.writtenNotes(stop);
            m_annotationsProblem.reset();
            m_annotationsFailure = nullptr;
            const Annotations::News news = m_annotations.adopt(written);
            followPersistence();
            if (!news.keywords.isEmpty())
                Q_EMIT tagsChanged(news.keywords.values());
            for (const QUuid &appId : news.apps)
                Q_EMIT notesChanged(appId);
            for (const OneShot<Done> &waiting : std::exchange(m_annotationsAwaited, {}))
                waiting.resolve({});
            for (const OneShot<Done> &waiting : std::exchange(m_annotationsRequired, {}))
                waiting.resolve({});
            co_return;
        } catch (const Error &error) {
            m_annotationsProblem = error.description();
            m_annotationsFailure = std::current_exception();
        }
        for (const OneShot<Done> &waiting : std::exchange(m_annotationsRequired, {}))
            waiting.fail(m_annotationsFailure);
        followPersistence();
        co_await m_clock->sleep(persistenceRetryInterval, stop);
    }
}

Task<void> ASOStore::annotationsRead(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (m_annotations.areRead())
        co_return;
    const OneShot<Done> read;
    m_annotationsAwaited.push_back(read);
    co_await read.wait(stop);
}

Task<void> ASOStore::requireAnnotations(std::stop_token callersStop)
{
    const ScopedStop stop(m_tasks, callersStop);
    if (m_annotations.areRead())
        co_return;
    if (m_annotationsFailure)
        std::rethrow_exception(m_annotationsFailure);
    const OneShot<Done> read;
    m_annotationsRequired.push_back(read);
    co_await read.wait(stop);
}

QStringList ASOStore::tags(QUuid keywordId) const
{
    return m_annotations.tags(keywordId);
}

QStringList ASOStore::allTags(QUuid appId) const
{
    // A name has one form, unless two were saved before both were known.
    QSet<QString> names;
    for (const TrackedKeyword &keyword : m_keywords.all()) {
        if (keyword.appId != appId)
            continue;
        for (const QString &tag : m_annotations.tags(keyword.id))
            names.insert(tag);
    }
    QStringList tags;
    for (const QString &name : std::as_const(names))
        Annotations::putTag(tags, name);
    return tags;
}

void ASOStore::setTag(const QList<QUuid> &keywordIds, const QString &tag, bool isOn)
{
    requireStateRead();
    if (const auto refusal = tagRefusal(tag))
        throw StoreError(422, *refusal);
    const QString name = usableTagName(tag).value();
    QList<QUuid> changed;
    for (const QUuid &id : keywordIds) {
        if (!m_keywords.find(id))
            continue;
        if (const auto edit = m_annotations.tagEdit(id, name, isOn)) {
            m_annotations.apply(*edit);
            m_edits.emplace_back(*edit);
            changed.append(id);
        }
    }
    if (changed.isEmpty())
        return;
    Q_EMIT tagsChanged(changed);
    save();
}

QList<AppNote> ASOStore::notes(QUuid appId) const
{
    return m_annotations.notes(appId);
}

AppNote ASOStore::putNote(AppNote note)
{
    requireStateRead();
    if (!app(note.appId))
        throw StoreError(404, QStringLiteral("App not found"));
    note.text = note.text.trimmed();
    if (note.text.isEmpty())
        throw StoreError(422, QStringLiteral("A note needs a text."));
    if (note.text.size() > mostNoteLength) {
        throw StoreError(422,
                         QStringLiteral("A note has %1 characters at most.").arg(mostNoteLength));
    }
    if (note.id.isNull())
        note.id = QUuid::createUuid();
    if (note.writtenAt == Date())
        note.writtenAt = m_clock->now();
    m_annotations.apply(PutNote{note});
    m_edits.emplace_back(PutNote{note});
    Q_EMIT notesChanged(note.appId);
    save();
    return note;
}

std::optional<AppNote> ASOStore::removeNote(QUuid id)
{
    const std::optional<AppNote> note = m_annotations.note(id);
    if (!note)
        return std::nullopt;
    m_annotations.apply(RemoveNote{id});
    m_edits.emplace_back(RemoveNote{id});
    Q_EMIT notesChanged(note->appId);
    save();
    return note;
}

} // namespace veltrix
