// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of veltrix-sample-services.
#pragma once

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>

#include <chrono>
#include <cstdint>
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
    /// The share of all requests that fail, in percent.
    int faults = 0;
    /// What decides which of them and how.
    std::uint64_t faultSeed = 1;
    /// How far the clock of the research service is behind. Clients take its answers for so old.
    std::chrono::seconds researchBehind{0};
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
