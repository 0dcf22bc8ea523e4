// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of veltrix-sample-services.
#pragma once

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace veltrix::sample
{

struct Options {
    /// 0 takes a free port.
    int port = 0;
    int httpsPort = 0;
    /// The day that the App Store lives in; without one, today in UTC.
    std::optional<QDate> date;
    /// Searches and look-ups let through a minute; 0 means no limit.
    int throttle = 0;
    bool researchPending = false;
    QString updateVersion = QStringLiteral("99.0.0");
    /// Empty, or 32 bytes.
    QByteArray updateSeed;
    QString readyFile;
    QString certificateFile;
    QString logFile;
    bool dieWithParent = false;
};

/// A text to print instead of running, and the exit status.
struct Farewell {
    QString text;
    int status = 0;
};

/// Reads the arguments (the first is the program's name).
std::variant<Options, Farewell> readOptions(const QStringList &arguments);

} // namespace veltrix::sample
