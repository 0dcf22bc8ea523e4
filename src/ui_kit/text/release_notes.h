// SPDX-License-Identifier: GPL-3.0-or-later
// The notes of a release, as plain text.
#pragma once

#include <QString>

namespace veltrix
{

/// Notes from an update feed, HTML or not, as lines of text: lists keep their marks, everything
/// that would load, link or run something is gone, and so is all formatting. Very long notes are
/// cut and end with "…".
QString plainNotes(const QString &notes);

} // namespace veltrix
