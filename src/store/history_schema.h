// SPDX-License-Identifier: GPL-3.0-or-later
// The form of the history database, and how an older form becomes this one.
#pragma once

#include "effects/sqlite_database.h"

namespace veltrix
{

/// That a history cannot be used, for that reason.
DatabaseError unusableHistory(const QString &path, const QString &reason);

/// The bytes of a history without anything in it.
QByteArray newHistory();

/// Sees that a database is a history of this form. An older form is brought to this one in one
/// step, once a copy of it is on the disk: beside it, "history.version-1.sqlite". Throws
/// DatabaseError for everything else, and FileError when the copy cannot be made; then nothing has
/// changed. `path`: the file that is open.
void requireHistory(SqliteDatabase &database, const QString &path);

} // namespace veltrix
