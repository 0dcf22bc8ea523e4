// SPDX-License-Identifier: GPL-3.0-or-later
// Notices when the network comes back.
#pragma once

#include <QObject>

namespace veltrix
{

/// Says when the machine reaches the internet again after it did not. Where the system does not
/// tell, this never says anything.
class NetworkReturn final : public QObject
{
    Q_OBJECT

public:
    explicit NetworkReturn(QObject *parent = nullptr);

    /// Listens to the system. False when it tells nothing about its network.
    bool listen();
    /// What the system tells: whether the internet can be reached.
    void setReachable(bool isReachable);

Q_SIGNALS:
    void returned();

private:
    bool m_isReachable = true;
};

} // namespace veltrix
