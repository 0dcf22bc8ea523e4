// SPDX-License-Identifier: GPL-3.0-or-later
// What is shown of texts that others wrote: listings of the App Store, update feeds.
#pragma once

#include <QString>

namespace veltrix
{

/// The text without control characters and without those that turn the direction of the letters
/// around them: they are not seen and change what is read. Every kind of line end (CR LF, U+0085,
/// U+2028, U+2029, …) is '\n'. Records stay as they were sent; only what is shown is cleaned.
QString shownText(const QString &text);

/// The same on one line: line ends and tabs are spaces, and surrounding space is gone.
QString shownLine(const QString &text);

/// A name on one line, as it stands inside a sentence: one that is written from right to left is
/// isolated, so that it does not turn what follows it.
QString inSentence(const QString &name);

} // namespace veltrix
