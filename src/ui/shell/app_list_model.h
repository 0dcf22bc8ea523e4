// SPDX-License-Identifier: GPL-3.0-or-later
// The tracked apps as the sidebar lists them.
#pragma once

#include "store/aso_store.h"

#include <QAbstractListModel>

namespace veltrix
{

class AppListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    static constexpr int idRole = Qt::UserRole;

    explicit AppListModel(ASOStore &store, QObject *parent = nullptr);

    /// Only apps whose name contains the text, ignoring case and diacritics.
    void setSearch(const QString &text);
    void setSelected(std::optional<QUuid> id);

    [[nodiscard]] const AppProfile &appAt(int row) const { return m_apps[row]; }
    [[nodiscard]] int rowOf(QUuid id) const;
    /// -1 when none is selected, or it was not found.
    [[nodiscard]] int selectedRow() const { return m_selected ? rowOf(*m_selected) : -1; }
    [[nodiscard]] bool isSelected(int row) const { return m_selected == m_apps[row].id; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    [[nodiscard]] QList<AppProfile> matching() const;
    void followStore();

    ASOStore &m_store;
    QString m_search;
    std::optional<QUuid> m_selected;
    QList<AppProfile> m_apps;
};

} // namespace veltrix
