// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/removals.h"

#include "ui_kit/text/shown_text.h"

namespace veltrix
{

namespace
{

/// "12 keywords", or the name of the one thing that was removed.
QString nameOf(const RemovedTracking &removed)
{
    if (!removed.apps.empty())
        return inSentence(removed.apps.front().record.appName);
    if (removed.keywords.empty())
        return inSentence(removed.competitors.front().record.name);
    if (removed.keywords.size() > 1)
        return Removals::tr("%L1 keywords").arg(removed.keywords.size());
    return Removals::tr("“%1”").arg(inSentence(removed.keywords.front().record.keyword));
}

} // namespace

Removals::Removals(ASOStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    connect(&store, &ASOStore::trackingRemoved, this, &Removals::keep);
}

Removals::~Removals() = default;

void Removals::keep(const RemovedTracking &removed)
{
    m_removed.push_back(removed);
    if (m_removed.size() > mostKept)
        m_removed.pop_front();
    setOffer(tr("Removed %1").arg(nameOf(removed)));
    m_tasks.own(endOffer(++m_number, m_tasks.token()));
}

void Removals::undo()
{
    if (m_removed.empty())
        return;
    RemovedTracking removed = std::move(m_removed.back());
    m_removed.pop_back();
    setOffer(QString());
    const QString name = nameOf(removed);
    try {
        const RestoredTracking restored = m_store.restore(std::move(removed));
        QList<TrackedKeyword> unmeasured;
        for (const TrackedKeyword &keyword : restored.keywords) {
            if (!m_store.newestSnapshot(keyword.id))
                unmeasured.append(keyword);
        }
        if (!unmeasured.isEmpty())
            m_store.queueKeywordRefreshes(unmeasured);
        std::optional<QUuid> appId;
        if (!restored.appIds.isEmpty())
            appId = restored.appIds.first();
        else if (!restored.keywords.isEmpty() && m_store.app(restored.keywords.first().appId))
            appId = restored.keywords.first().appId;
        Q_EMIT undone(tr("Restored %1").arg(name), appId);
    } catch (const StoreError &error) {
        Q_EMIT failed(error.description());
    }
}

void Removals::setOffer(const QString &offer)
{
    m_offer = offer;
    Q_EMIT offerChanged();
}

Task<void> Removals::endOffer(quint64 number, std::stop_token stop)
{
    co_await m_store.clock().sleep(offerTime, stop);
    if (number == m_number && !m_offer.isEmpty())
        setOffer(QString());
}

} // namespace veltrix
