// SPDX-License-Identifier: GPL-3.0-or-later
// What the menu's "Check for Updates…" needs to know.
#pragma once

#include "clients/update/updater.h"

namespace veltrix
{

/// Follows an updater: whether a check may start now.
class CheckForUpdatesModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY canCheckForUpdatesChanged)

public:
    /// Takes the updater's present value and then each new one. The updater may go first.
    explicit CheckForUpdatesModel(const Updater &updater, QObject *parent = nullptr);

    [[nodiscard]] bool canCheckForUpdates() const { return m_canCheckForUpdates; }

Q_SIGNALS:
    void canCheckForUpdatesChanged(bool canCheck);

private:
    void setCanCheckForUpdates(bool canCheck);

    bool m_canCheckForUpdates;
};

} // namespace veltrix
