// SPDX-License-Identifier: GPL-3.0-or-later
// Names for the files that the user saves.
#pragma once

#include <QString>

namespace veltrix
{

/// A name for a table about `subject` that every file system takes: "Lumen keywords.csv".
QString suggestedFileName(const QString &subject, const QString &what);

} // namespace veltrix
