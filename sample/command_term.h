// SPDX-License-Identifier: GPL-3.0-or-later
// Search terms that ask a sample service to misbehave.
#pragma once

#include <QString>

namespace veltrix::sample
{

/// "sample:slow photo editor" is the command "slow" for the term "photo editor".
struct CommandTerm {
    /// Lower case; empty for an ordinary term.
    QString command;
    /// What is searched for. A command without a term of its own searches for "photo editor", so
    /// that a command that answers at all answers with results.
    QString term;

    bool operator==(const CommandTerm &) const = default;
};

CommandTerm commandTerm(const QString &text);

} // namespace veltrix::sample
