// SPDX-License-Identifier: GPL-3.0-or-later
// JSON values as text, written the way the App Store's services write them.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace veltrix::sample
{

/// A quoted string: UTF-8, with "\u2028" and the control characters escaped.
QByteArray jsonString(QStringView text);

/// An array of strings, parted by ", ".
QByteArray jsonStrings(const QStringList &texts);

/// Every digit of the binary value (4.628 has 49 decimals); whole numbers have none.
QByteArray jsonExactNumber(double number);

/// An amount with two decimals, such as 0.00.
QByteArray jsonAmount(double amount);

} // namespace veltrix::sample
