// SPDX-License-Identifier: GPL-3.0-or-later
// What a tag of a keyword may be called.
#pragma once

#include <QString>

#include <optional>

namespace veltrix
{

/// Characters that a name may have.
inline constexpr qsizetype mostTagLength = 40;

/// The name that a text stands for: without white space around it, and with one space where there
/// was more within it. None for a text that no tag can be called by; tagRefusal() says why.
std::optional<QString> usableTagName(const QString &text);

/// Why a text can be no name, in words for the user: it is empty, longer than mostTagLength, or has
/// a comma, a semicolon or a control character, which would end it in a list or a file. None for
/// one that can.
std::optional<QString> tagRefusal(const QString &text);

} // namespace veltrix
