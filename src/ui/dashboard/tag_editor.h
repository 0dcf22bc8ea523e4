// SPDX-License-Identifier: GPL-3.0-or-later
// Changing the tags of keywords.
#pragma once

#include "ui/dashboard/tag_change.h"

#include <functional>

class QWidget;

namespace veltrix
{

/// Opens the tags of these keywords, at least one, at `anchor`: every tag of their app to check,
/// and a field for a new one. A check counts at once; when the popover closes, `edited` is given
/// what all of them have changed, if anything. `note` stands below the list.
void openTagEditor(ASOStore &store, QWidget *anchor, const QList<QUuid> &keywordIds,
                   const QString &note, std::function<void(const TagChange &change)> edited);

} // namespace veltrix
