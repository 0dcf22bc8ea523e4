// SPDX-License-Identifier: GPL-3.0-or-later
// The texts language by language; theme.cpp finds the right one.
#pragma once

#include "sample/theme.h"

namespace veltrix::sample
{

const LanguageTexts &englishTexts();
const LanguageTexts &germanTexts();
const LanguageTexts &frenchTexts();
const LanguageTexts &spanishTexts();
const LanguageTexts &portugueseTexts();
const LanguageTexts &japaneseTexts();
const LanguageTexts &koreanTexts();
const LanguageTexts &thaiTexts();
const LanguageTexts &arabicTexts();
const LanguageTexts &russianTexts();

} // namespace veltrix::sample
