// SPDX-License-Identifier: GPL-3.0-or-later
// A program that outlives whoever reads what it prints.
#pragma once

#include "effects/file_error.h"

#include <QByteArrayView>

#include <cstdio>

namespace veltrix
{

/// To be called before the program opens anything. Standard input, output and error that are closed
/// are opened on the null device, so that no file of the program gets their numbers and their
/// lines; and writing to a pipe that nobody reads fails instead of ending the program.
void secureStandardStreams();

/// The one stream that leads to standard output from here on: whatever else is printed there goes
/// to standard error. For a program whose output others read.
std::FILE *takeStandardOutput();

enum class Readers { Some, None };
/// Writes all of it to the stream's file, beside what the stream itself may hold. Gives None when
/// nobody reads any more. Throws FileError, which speaks of standard output.
Readers writeToStandardOutput(std::FILE *output, QByteArrayView bytes);

/// Whether somebody watches standard error on a terminal.
bool isErrorOutputATerminal();

} // namespace veltrix
