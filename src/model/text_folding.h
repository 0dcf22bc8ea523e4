// SPDX-License-Identifier: GPL-3.0-or-later
// When two texts are the same, and when one is found in another. Neither depends on the locale.
// (The scoring models have their own rule for words, beside them.)
#pragma once

#include <QString>

namespace veltrix
{

/// Texts are the same ignoring case when these are equal. Accents count: "cafe" is not "café".
QString foldedCase(const QString &text);

/// Without case, accents and differences of width: "Café", "CAFE" and "ｃａｆｅ" fold to one text,
/// and so do "Straße" and "STRASSE". A text is found in another when the folded one contains it
/// folded. Marks that make another letter stay: Thai and Devanagari vowels, Japanese voicing.
QString foldedForSearch(const QString &text);

} // namespace veltrix
