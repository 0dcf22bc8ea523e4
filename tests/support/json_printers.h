// SPDX-License-Identifier: GPL-3.0-or-later
// Prints records as JSON when a comparison fails.
#pragma once

#include "json/json_writer.h"

#include <QString>

#include <ostream>

namespace veltrix
{

template <FieldListed Record>
void PrintTo(const Record &record, std::ostream *out)
{
    *out << toJson(record).toStdString();
}

inline void PrintTo(Date date, std::ostream *out)
{
    *out << formatInternetDateTime(date).toStdString() << " (" << referenceSeconds(date) << ")";
}

} // namespace veltrix

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &texts, std::ostream *out)
{
    *out << "[\"" << texts.join(QStringLiteral("\", \"")).toStdString() << "\"]";
}
