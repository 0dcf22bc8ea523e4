// SPDX-License-Identifier: GPL-3.0-or-later
// Which of two versions of a program is newer.
#pragma once

#include <QStringView>

#include <compare>

namespace veltrix
{

/// True for a text that can be ordered as a version: it begins with a digit and has at most 64
/// characters, all of them ASCII letters, digits or one of ".-_+~:".
bool isMachineVersion(QStringView text);

/// Orders versions by their components from left to right. A component is a run of digits or a run
/// of letters; what stands between them only separates. Numbers compare by value, of any length;
/// letters compare without case and come before any number, so that "2.0b1" precedes "2.0".
/// Missing components count as zero: "1.0" and "1.0.0" are equivalent.
std::weak_ordering compareVersions(QStringView one, QStringView other);

/// The numbers with which a version begins: "6.1.0" of "6.1.0-18-amd64". What follows names a
/// build, and would otherwise make it look like an early form of 6.1.0.
QStringView leadingNumbers(QStringView version);

} // namespace veltrix
