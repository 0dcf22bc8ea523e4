// SPDX-License-Identifier: GPL-3.0-or-later
// The made-up App Store in English: its themes stand in themes_*.cpp, this is the rest.
#include "sample/texts.h"

namespace veltrix::sample
{

namespace
{

/// English publishers are made from brand words and one of these endings.
constexpr QStringView publisherEndings[] = {
    u" Labs",     u" Studio",   u" Ltd",          u" Inc.",      u" LLC",         u" Software GmbH",
    u" Apps",     u" Works",    u" Interactive",  u" Oy",        u" AB",          u" Pte. Ltd.",
    u" Software", u" Creative", u" Technologies", u" & Friends", u" Digital ApS", u" Mobile B.V.",
};

constexpr QStringView sentences[] = {
    u"%1 is a calm, friendly app for “%2”, made by a small team that uses it every day.",
    u"• %2: fast, clear and where you expect it",
    u"★ %2 without the clutter ✨",
    u"No account needed, no ads in the way, and nothing leaves your device unless you share it.",
    u"WHAT PEOPLE SAY\t\"I tried five others before I found %1 – this one stays.\"",
    u"Everything that you do can be undone, and everything that you make can be exported.",
    u"NEW: widgets, dark mode, and a calmer first screen 🎉",
    u"Looking for %2? Open %1, tap once, done.",
    u"Works offline. Works on old phones. Works when you are in a hurry.",
    u"PREMIUM\u2028Unlock all of %1 by a yearly plan or a one-time purchase.",
    u"Payment is charged at confirmation; the plan renews unless it is turned off 24 hours before "
    u"the period ends.",
    u"Questions or ideas? Write to us – every message is read by a person 💌",
};

} // namespace

const LanguageTexts &englishTexts()
{
    static constexpr LanguageTexts texts{Language::English, u"US",    {}, {},
                                         publisherEndings,  sentences};
    return texts;
}

} // namespace veltrix::sample
