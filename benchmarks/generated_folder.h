// SPDX-License-Identifier: GPL-3.0-or-later
// Data folders as a year of use leaves them, for benchmarks.
#pragma once

#include "model/itunes_app_result.h"

#include <QString>

namespace veltrix
{

/// How much a folder holds. The state file is full with some 3,600 measurements; what is older is
/// in the history.
struct FolderSize {
    int keywords;
    int daysInFile;
    int daysInHistory;
};

/// Fills a folder that is there: state file, history, ranked apps and suggestions of each keyword,
/// and below "cache" the icons of all measurements.
void fillDataFolder(const QString &folder, const FolderSize &size);

/// What a search finds, whole listings of about 10 kB each. Each keyword finds its own.
QList<ITunesAppResult> foundFor(int keyword);

QString rankedAppsPathIn(const QString &folder);

} // namespace veltrix
