// SPDX-License-Identifier: GPL-3.0-or-later
// The bodies of search and look-up, down to their line feeds.
#include "sample/itunes_body.h"

namespace veltrix::sample
{

namespace
{

/// The real service starts a line before artwork, non-empty picture lists, devices and long texts.
bool startsLine(const RecordField &field)
{
    if (field.value == "[]")
        return false;
    return field.key.startsWith("artworkUrl") || field.key.endsWith("creenshotUrls") ||
           field.key == "supportedDevices" || field.key == "description" ||
           field.key == "releaseNotes";
}

QByteArray objectOf(const std::vector<RecordField> &fields)
{
    QByteArray object("{");
    for (const RecordField &field : fields) {
        if (object.size() > 1)
            object += ", ";
        if (object.size() > 1 && startsLine(field))
            object += '\n';
        object += '"' + field.key + "\":" + field.value;
    }
    return object + '}';
}

} // namespace

QByteArray itunesBody(const std::vector<std::vector<RecordField>> &records)
{
    QByteArray body("\n\n\n{\n \"resultCount\":");
    body += QByteArray::number(static_cast<qint64>(records.size())) + ",\n \"results\": [";
    const char *between = "\n";
    for (const std::vector<RecordField> &record : records) {
        body += between + objectOf(record);
        between = ", \n";
    }
    return body + "]\n}\n\n\n";
}

QByteArray invalidValueBody(const QByteArray &key)
{
    return "{\n\"errorMessage\":\"Invalid value(s) for key(s): [" + key +
           "]\", \n\"queryParameters\":{}}\n";
}

} // namespace veltrix::sample
