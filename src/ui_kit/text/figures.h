// SPDX-License-Identifier: GPL-3.0-or-later
// One kind of digits on every screen, whatever the user's language.
#pragma once

#include <QLocale>
#include <QString>

namespace veltrix
{

/// Makes `user` the locale of the process. Scores, ranks, counts and exported files have the digits
/// 0 to 9 in every language, and a screen with two kinds of digits cannot be read down a column. So
/// QLocale(), which formats figures ("%L1" too), becomes English (United States) where the user's
/// locale writes others; names of months and regions stay in the user's language.
void setUserLocale(const QLocale &user);

/// The locale for words: the user's language. Its digits may be others than 0 to 9: a text with a
/// figure that it makes goes through withPlainDigits().
QLocale wordLocale();

/// The text with every decimal digit replaced by 0 to 9.
QString withPlainDigits(const QString &text);

} // namespace veltrix
