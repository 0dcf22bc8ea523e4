// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/app_list_model.h"

#include "model/text_folding.h"
#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"

#include <algorithm>

namespace veltrix
{

AppListModel::AppListModel(ASOStore &store, QObject *parent)
    : QAbstractListModel(parent), m_store(store), m_apps(matching())
{
    connect(&m_store, &ASOStore::appsChanged, this, &AppListModel::followStore);
}

QList<AppProfile> AppListModel::matching() const
{
    QList<AppProfile> apps;
    for (const AppProfile &app : m_store.apps()) {
        if (m_search.isEmpty() || foldedForSearch(app.appName).contains(m_search))
            apps.append(app);
    }
    return apps;
}

void AppListModel::setSearch(const QString &text)
{
    const QString folded = foldedForSearch(text.trimmed());
    if (folded == m_search)
        return;
    beginResetModel();
    m_search = folded;
    m_apps = matching();
    endResetModel();
}

void AppListModel::followStore()
{
    // Apps are added at the end and removed one by one; their order never changes.
    const QList<AppProfile> apps = matching();
    for (int row = int(m_apps.size()) - 1; row >= 0; --row) {
        const bool stays = std::any_of(apps.begin(), apps.end(), [&](const AppProfile &app) {
            return app.id == m_apps[row].id;
        });
        if (!stays) {
            beginRemoveRows({}, row, row);
            m_apps.removeAt(row);
            endRemoveRows();
        }
    }
    for (int row = 0; row < apps.size(); ++row) {
        if (row < m_apps.size() && m_apps[row].id == apps[row].id) {
            if (m_apps[row] != apps[row]) {
                m_apps[row] = apps[row];
                Q_EMIT dataChanged(index(row), index(row));
            }
            continue;
        }
        beginInsertRows({}, row, row);
        m_apps.insert(row, apps[row]);
        endInsertRows();
    }
}

void AppListModel::setSelected(std::optional<QUuid> id)
{
    if (m_selected == id)
        return;
    m_selected = id;
    if (!m_apps.isEmpty())
        Q_EMIT dataChanged(index(0), index(int(m_apps.size()) - 1));
}

int AppListModel::rowOf(QUuid id) const
{
    for (int row = 0; row < m_apps.size(); ++row) {
        if (m_apps[row].id == id)
            return row;
    }
    return -1;
}

int AppListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_apps.size());
}

QVariant AppListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const AppProfile &app = m_apps[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return shownLine(app.appName);
    case Qt::AccessibleTextRole: {
        QString sentence =
            inSentence(app.appName) + QStringLiteral(", ") + storefrontName(app.country);
        if (isSelected(index.row()))
            sentence += QStringLiteral(", ") + tr("selected");
        return sentence;
    }
    case idRole:
        return app.id;
    default:
        return {};
    }
}

} // namespace veltrix
