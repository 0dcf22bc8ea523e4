// SPDX-License-Identifier: GPL-3.0-or-later
// What the windows need of the updater.
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

#include <optional>

namespace veltrix
{

/// What the window says by itself about an update, wherever the user is.
struct UpdaterAnnouncement {
    QString text;
    /// Without this update something is broken: said plainly.
    bool isCritical = false;
    /// status().action is the next step; otherwise the settings tell more first.
    bool offersAction = false;

    bool operator==(const UpdaterAnnouncement &) const = default;
};

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
    /// What is new in the version that is available: plain text, empty when nothing is known.
    QString notes = {};
    /// A page with notes for the user's browser; empty when there is none.
    QUrl notesLink = {};
    /// Nothing while there is no need to speak outside the settings.
    std::optional<UpdaterAnnouncement> announcement = {};

    bool operator==(const UpdaterStatus &) const = default;
};

/// Checks for updates, loads them, and says how far it is.
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
    /// The user has seen the outcome and wants to hear no more of it for now.
    virtual void dismiss() = 0;

Q_SIGNALS:
    /// Any of the above has changed.
    void changed();
};

} // namespace veltrix
