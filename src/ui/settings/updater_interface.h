// SPDX-License-Identifier: GPL-3.0-or-later
// What the windows need of the updater.
#pragma once

#include <QObject>
#include <QString>

#include <optional>

namespace veltrix
{

/// What a check or a download is doing, in words for the user.
struct UpdaterStatus {
    /// Empty while there is nothing to tell.
    QString text;
    /// 0 to 1 while something is loaded.
    std::optional<double> fraction;
    /// Something runs that can be stopped.
    bool canStop = false;
    /// What the user can do about it now, for example "Download"; empty when there is nothing.
    QString action;

    bool operator==(const UpdaterStatus &) const = default;
};

class UpdaterInterface : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool automatically) = 0;
    /// A check may start now.
    [[nodiscard]] virtual bool canCheckForUpdates() const = 0;
    /// Starts a check that says what it finds.
    virtual void checkForUpdates() = 0;
    [[nodiscard]] virtual UpdaterStatus status() const = 0;
    virtual void stop() = 0;
    /// Does what status().action says.
    virtual void performAction() = 0;

Q_SIGNALS:
    /// Any of the above has changed.
    void changed();
};

} // namespace veltrix
