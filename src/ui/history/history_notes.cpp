// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_notes.h"

#include "ui_kit/text/shown_text.h"

#include <algorithm>

namespace veltrix
{

HistoryNotes::HistoryNotes(ASOStore &store, QUuid appId, QObject *parent)
    : QObject(parent), m_store(store), m_appId(appId)
{
    connect(&m_store, &ASOStore::notesChanged, this, [this](QUuid app) {
        if (app == m_appId)
            Q_EMIT changed();
    });
}

HistoryNotes::~HistoryNotes() = default;

std::optional<AppNote> HistoryNotes::note(QUuid id) const
{
    const QList<AppNote> notes = all();
    const auto found = std::ranges::find(notes, id, &AppNote::id);
    return found == notes.end() ? std::nullopt : std::optional(*found);
}

AppNote HistoryNotes::newNote(std::int64_t day) const
{
    return {QUuid(), m_appId, day, QString(), Date()};
}

void HistoryNotes::save(AppNote note)
{
    if (note.id.isNull())
        note.writtenAt = m_store.clock().now();
    m_store.putNote(std::move(note));
}

void HistoryNotes::remove(QUuid id)
{
    const std::optional<AppNote> removed = m_store.removeNote(id);
    if (!removed)
        return;
    m_removed.push_back(*removed);
    setOffer(tr("Removed “%1”").arg(inSentence(removed->text)));
    m_tasks.own(endOffer(++m_number, m_tasks.token()));
}

void HistoryNotes::undo()
{
    if (m_removed.empty())
        return;
    const AppNote removed = m_removed.back();
    m_removed.pop_back();
    setOffer(QString());
    try {
        m_store.putNote(removed);
    } catch (const StoreError &error) {
        Q_EMIT failed(error.description());
    }
}

void HistoryNotes::setOffer(const QString &offer)
{
    m_offer = offer;
    Q_EMIT offerChanged();
}

Task<void> HistoryNotes::endOffer(quint64 number, std::stop_token stop)
{
    co_await m_store.clock().sleep(offerTime, stop);
    if (number == m_number && !m_offer.isEmpty())
        setOffer(QString());
}

} // namespace veltrix
