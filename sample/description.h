// SPDX-License-Identifier: GPL-3.0-or-later
// What an app says about itself in the store.
#pragma once

#include "sample/sample_app.h"

#include <QString>

namespace veltrix::sample
{

/// The longest description that the store takes, in UTF-16 units.
inline constexpr qsizetype longestDescription = 3'999;

/// The language in which the app presents itself to speakers of `wanted`.
Language listedLanguage(const SampleApp &app, Language wanted);

/// Paragraphs and bullets about the app's phrases, with the odd characters that real ones have:
/// line separators, tabs, quotes, emoji, here and there a backspace. At most longestDescription.
QString descriptionOf(const SampleApp &app, Language wanted);

/// The news of the current version.
QString releaseNotesOf(const SampleApp &app, Language wanted);

} // namespace veltrix::sample
