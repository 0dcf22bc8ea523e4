// SPDX-License-Identifier: GPL-3.0-or-later
// The keywords that a command names.
#pragma once

#include "headless/command_line.h"
#include "model/error.h"
#include "model/tracked_keyword.h"

#include <QList>

namespace veltrix
{

class ASOStore;

/// Something is named that is not tracked.
class UnknownChoice final : public Error
{
public:
    using Error::Error;
};

/// The keywords of the apps and storefronts that are named, in the order of the store. Apps are
/// named by App Store id or name, ignoring case; several of one name are all meant. Throws
/// UnknownChoice for an app or a storefront of which there is no keyword to choose, with the names
/// that there are.
QList<TrackedKeyword> chosenKeywords(const ASOStore &store, const KeywordChoice &choice);

} // namespace veltrix
