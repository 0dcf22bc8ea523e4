// SPDX-License-Identifier: GPL-3.0-or-later
// What the program is started to do.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace veltrix
{

/// Which keywords a command is about: all of them unless something is named.
struct KeywordChoice {
    /// Names or App Store ids of apps.
    QStringList apps;
    /// Two-letter codes.
    QStringList storefronts;

    bool operator==(const KeywordChoice &) const = default;
};

/// `veltrix --measure`: what has no measurement on the current UTC day yet.
struct MeasureCommand {
    KeywordChoice choice;
    /// Also what was measured today.
    bool all = false;
    /// JSON objects, one a line, instead of text.
    bool json = false;
    /// Tell in a desktop notification what changed.
    bool notify = false;

    bool operator==(const MeasureCommand &) const = default;
};

/// `veltrix --export`: the keywords with their newest measurements, or all measurements.
struct ExportCommand {
    enum class Form { Csv, Json };

    KeywordChoice choice;
    Form form = Form::Csv;
    /// All measurements instead of the table of keywords.
    bool history = false;
    /// Path of the file to write; none for standard output.
    std::optional<QString> output;

    bool operator==(const ExportCommand &) const = default;
};

/// A text for standard output, and nothing else to do: `--help`, `--version`.
struct PrintText {
    QString text;

    bool operator==(const PrintText &) const = default;
};

/// The options make no sense.
struct WrongUse {
    /// Says what is wrong, as a sentence.
    QString message;

    bool operator==(const WrongUse &) const = default;
};

using Command = std::variant<MeasureCommand, ExportCommand, PrintText, WrongUse>;

/// Whether the arguments, of which the first is the program, have an option that is not for a
/// window, as "-platform" and "--overview" are. It may be one that nobody knows.
bool hasCommand(const QStringList &arguments);

/// Whether a window that the arguments open is to show the overview.
bool wantsOverview(const QStringList &arguments);

/// What the arguments ask for, which have one.
Command commandOf(const QStringList &arguments, const QString &version);

/// How the program ends.
enum class ExitStatus {
    /// All that was to be done was.
    Done = 0,
    /// Something was not.
    Incomplete = 1,
    WrongUse = 2,
    /// Another start has the data folder and does not answer.
    Busy = 3,
};

} // namespace veltrix
