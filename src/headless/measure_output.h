// SPDX-License-Identifier: GPL-3.0-or-later
// The console of a start that measures.
#pragma once

#include "headless/command_line.h"
#include "headless/measure_messages.h"

#include <cstdio>
#include <optional>

namespace veltrix
{

/// Prints messages as they come: keywords and the summary on standard output, as text or as JSON
/// objects, one a line; progress and wrong use on standard error, the first on a terminal only.
class MeasureOutput
{
public:
    struct Streams {
        std::FILE *out = stdout;
        std::FILE *error = stderr;
        /// Whether `error` is a terminal.
        bool showsProgress = false;
    };

    enum class Form { Text, Json };

    MeasureOutput(Form form, Streams streams);

    void print(const MeasureMessage &message);
    /// What went wrong beside measuring, on standard error.
    void sayProblem(const QString &problem);
    /// What the last message means for the program's end; none before it has come.
    [[nodiscard]] std::optional<ExitStatus> status() const { return m_status; }
    /// What it wants to be told in a notification.
    [[nodiscard]] const std::optional<RankNotice> &notice() const { return m_notice; }

private:
    void printLine(const QByteArray &line);
    void showProgress(const QString &text);

    Form m_form;
    Streams m_streams;
    bool m_progressStands = false;
    std::optional<ExitStatus> m_status;
    std::optional<RankNotice> m_notice;
};

} // namespace veltrix
