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
    connect(&store, &ASOStore::trackingRemoved, this, [this](const RemovedTracking &removed) {
        keep(removed, tr("Removed %1").arg(nameOf(removed)));
    });
}

Removals::~Removals() = default;

void Removals::keepTags(const TagChange &change)
{
    keep(change, tr("Changed %1").arg(change.name()));
}

void Removals::keep(Step step, const QString &offer)
{
    m_steps.push_back(std::move(step));
    if (m_steps.size() > mostKept)
        m_steps.pop_front();
    setOffer(offer);
    m_tasks.own(endOffer(++m_number, m_tasks.token()));
}

void Removals::undo()
{
    if (m_steps.empty())
        return;
    Step step = std::move(m_steps.back());
    m_steps.pop_back();
    setOffer(QString());
    std::visit([this](auto &&kept) { restore(std::forward<decltype(kept)>(kept)); },
               std::move(step));
}

void Removals::restore(const TagChange &change)
{
    try {
        change.undo(m_store);
        Q_EMIT undone(tr("Restored %1").arg(change.name()), std::nullopt);
    } catch (const StoreError &error) {
        Q_EMIT failed(error.description());
    }
}

void Removals::restore(RemovedTracking removed)
{
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
