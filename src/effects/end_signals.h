// SPDX-License-Identifier: GPL-3.0-or-later
// The system asks the program to end.
#pragma once

#include <QObject>

namespace veltrix
{

/// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal, for the life of this object; there is one at
/// a time. The third ends the program at once, should it hang; the second may only be an echo, for
/// some who end a program signal it and then all of its group.
class EndSignals final : public QObject
{
    Q_OBJECT

public:
    explicit EndSignals(QObject *parent = nullptr);
    ~EndSignals() override;

Q_SIGNALS:
    void endRequested();
};

} // namespace veltrix
