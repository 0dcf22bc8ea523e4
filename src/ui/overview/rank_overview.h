// SPDX-License-Identifier: GPL-3.0-or-later
// How all apps stand, worked out where something has changed.
#pragma once

#include "store/aso_store.h"
#include "ui/overview/app_standing.h"

#include <QHash>
#include <QObject>
#include <QSet>

namespace veltrix
{

/// Reads the store and follows its signals. What changes together is told together, once the event
/// loop runs; a keyword that was measured costs its own app alone. While nobody looks, nothing is
/// worked out.
class RankOverview final : public QObject
{
    Q_OBJECT

public:
    explicit RankOverview(ASOStore &store, QObject *parent = nullptr);

    /// Whether somebody looks.
    void setActive(bool isActive);
    /// In the order of the app list.
    [[nodiscard]] const QList<QUuid> &apps() const { return m_apps; }
    /// Null for an app that is not tracked.
    [[nodiscard]] const AppStanding *standing(const QUuid &appId) const;
    /// Whether the app or one of its keywords contains the text, as foldedForSearch() has made it.
    [[nodiscard]] bool matches(const QUuid &appId, const QString &folded) const;
    /// Whether of any keyword it is known if it has moved.
    [[nodiscard]] bool canCompare(Period period) const;
    [[nodiscard]] int keywordCount() const { return int(m_appOf.size()); }

Q_SIGNALS:
    /// Apps came, went or have another name; every standing may be another.
    void appsChanged();
    /// The standing of an app is another.
    void standingChanged(QUuid appId);
    /// Keywords that came, went or have other ranks; after the two above.
    void keywordsChanged(const QSet<QUuid> &ids);

private:
    struct Known {
        AppStanding standing;
        /// Of its name and its keywords, a line each.
        QString folded;
    };

    void follow(const QList<QUuid> &keywordIds);
    void followApps();
    void schedule();
    void apply();
    void rebuild();
    void renew(const QUuid &appId);
    [[nodiscard]] Known known(const AppProfile &app,
                              const std::vector<const TrackedKeyword *> &keywords) const;

    ASOStore &m_store;
    QList<QUuid> m_apps;
    QHash<QUuid, Known> m_known;
    QHash<QUuid, QUuid> m_appOf;
    bool m_isActive = false;
    bool m_isScheduled = false;
    bool m_hasOtherApps = true;
    QSet<QUuid> m_changed;
};

} // namespace veltrix
