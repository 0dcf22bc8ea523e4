// SPDX-License-Identifier: GPL-3.0-or-later
// Which includes a source file may have, as a table. The include folders of the floors keep most of
// it already; this is what they cannot see: folders inside a floor, the system's headers, and ways
// around.
#pragma once

#include <QString>
#include <QStringList>

namespace veltrix
{

/// Every include of `text` that a file at `path` ("ui/shell/main_window.cpp", below src) may not
/// have, as one line each: the path, the include, and the rule. Empty when all is well.
QStringList forbiddenIncludes(const QString &path, const QString &text);

} // namespace veltrix
