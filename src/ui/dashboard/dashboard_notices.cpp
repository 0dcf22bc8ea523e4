// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/dashboard_notices.h"

namespace veltrix
{

DashboardNotices::DashboardNotices(ASOStore &store, QObject *parent)
    : QObject(parent), m_store(store)
{
    connect(&store, &ASOStore::keywordRemoved, this, &DashboardNotices::forgetOrphan);
    connect(&store, &ASOStore::appsChanged, this, &DashboardNotices::findOrphans);
    findOrphans();
}

void DashboardNotices::setApp(std::optional<QUuid> appId)
{
    m_appId = appId;
    Q_EMIT changed();
}

void DashboardNotices::setImported(QUuid appId, const AdmissionCount &count,
                                   const QList<RefusedLine> &refused)
{
    m_importedApp = appId;
    m_imported = count;
    m_refused = refused;
    Q_EMIT changed();
}

void DashboardNotices::dismissImported()
{
    setImported({}, {}, {});
}

QString DashboardNotices::importNotice() const
{
    if (m_refused.isEmpty() || m_importedApp != m_appId)
        return {};
    const QStringList lines = QStringList{admissionCount(m_imported)} + refusalLines(refused());
    return lines.join(u'\n');
}

QString DashboardNotices::orphansNotice() const
{
    QStringList names;
    for (const QUuid &id : m_orphans) {
        if (const auto keyword = m_store.trackedKeyword(id))
            names << keyword->keyword;
    }
    if (names.isEmpty())
        return {};
    if (names.size() == 1) {
        return tr("1 keyword belongs to an app that is no longer tracked: %1.")
            .arg(namesInShort(names));
    }
    return tr("%L1 keywords belong to an app that is no longer tracked: %2.")
        .arg(names.size())
        .arg(namesInShort(names));
}

void DashboardNotices::findOrphans()
{
    m_orphans.clear();
    for (const TrackedKeyword &keyword : m_store.keywordsWithoutApp())
        m_orphans.append(keyword.id);
    Q_EMIT changed();
}

void DashboardNotices::forgetOrphan(QUuid id)
{
    // Many are removed at once; it is told when they all are gone.
    if (m_orphans.removeOne(id))
        QMetaObject::invokeMethod(this, &DashboardNotices::changed, Qt::QueuedConnection);
}

} // namespace veltrix
