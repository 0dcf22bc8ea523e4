// SPDX-License-Identifier: GPL-3.0-or-later
// Makes texts comparable the way a store search compares them: without case, accents and
// punctuation.
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace veltrix::sample
{

/// Lower case without accents: compatibility-composed, case-folded, without Latin and Arabic marks,
/// Arabic letter variants made one, everything but letters, marks and digits made a space.
/// The result has no space at its ends and never two in a row.
QString folded(QStringView text);

/// The words of a text, folded.
QStringList foldedWords(QStringView text);

/// Whether a word is of a script that is searched by parts of words: Han, Kana, Hangul, Thai.
bool isSearchedByParts(QStringView word);

} // namespace veltrix::sample
