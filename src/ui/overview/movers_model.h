// SPDX-License-Identifier: GPL-3.0-or-later
// The keywords of all apps that have moved, as rows that change in place.
#pragma once

#include "store/aso_store.h"
#include "ui/overview/mover_column.h"
#include "ui_kit/table/entry_model.h"

#include <QHash>
#include <QSet>

namespace veltrix
{

/// The furthest first until it is sorted otherwise. A keyword that moves further stays where it
/// stands until resort(); one that has moved no longer goes away.
class MoversModel final : public EntryModel<Mover, MoverColumn>
{
    Q_OBJECT

public:
    explicit MoversModel(ASOStore &store, QObject *parent = nullptr);

    [[nodiscard]] Period period() const { return m_period; }
    void setPeriod(Period period);
    /// Only keywords that contain the text, or whose app does.
    void setSearch(const QString &text);
    /// Names and icons of apps are read again with the next update.
    void forgetApps() { m_apps.clear(); }
    /// Looks at these keywords again.
    void update(const QSet<QUuid> &ids);
    /// -1 for a keyword that is not shown.
    [[nodiscard]] int rowOf(QUuid id) const;

    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] QList<QStringList> texts(const std::vector<int> &rows,
                                           const std::vector<int> &columns) const override;

Q_SIGNALS:
    /// The number of movers, shown or not, may be another.
    void countChanged();

protected:
    [[nodiscard]] bool isShown(const Mover &mover) const override
    {
        return m_search.isEmpty() || mover.folded.contains(m_search);
    }
    [[nodiscard]] bool comesFirstOfEquals(const Mover &left, const Mover &right) const override;

private:
    struct App {
        bool isTracked = false;
        QString name;
        std::optional<Url> icon;
        QString folded;
        std::shared_ptr<const QCollatorSortKey> order;
    };

    /// None for a keyword that has not moved.
    [[nodiscard]] std::optional<Mover> moverOf(const TrackedKeyword &keyword);
    const App &appOf(const QUuid &id);
    void remember(const std::vector<Kept *> &added);

    ASOStore &m_store;
    Period m_period = Period::Yesterday;
    QString m_search;
    QHash<QUuid, App> m_apps;
    QHash<QUuid, Kept *> m_byId;
};

} // namespace veltrix
