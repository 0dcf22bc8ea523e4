// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/network_return.h"

#include <QNetworkInformation>

namespace veltrix
{

NetworkReturn::NetworkReturn(QObject *parent) : QObject(parent) {}

bool NetworkReturn::listen()
{
    using Reachability = QNetworkInformation::Reachability;
    if (!QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability))
        return false;
    // It belongs to the application, not to this.
    QNetworkInformation *system = QNetworkInformation::instance();
    const auto update = [this](Reachability reachability) {
        setReachable(reachability == Reachability::Online || reachability == Reachability::Unknown);
    };
    connect(system, &QNetworkInformation::reachabilityChanged, this, update);
    update(system->reachability());
    return true;
}

void NetworkReturn::setReachable(bool isReachable)
{
    const bool hasReturned = isReachable && !m_isReachable;
    m_isReachable = isReachable;
    if (hasReturned)
        Q_EMIT returned();
}

} // namespace veltrix
