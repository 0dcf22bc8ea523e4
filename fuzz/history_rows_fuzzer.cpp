// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a packed row of the history: refused, or a measurement that packs to the same. JSON
// is packed first, so that what is inside changes and not only how it is packed.
#include "fuzz_target.h"
#include "read_and_write.h"
#include "store/history_record.h"

#include <algorithm>

namespace
{

using namespace veltrix;

void unpackAnything(HistoryRecords &records, const QByteArray &packed)
{
    KeywordSnapshot snapshot;
    if (fuzz::isAccepted([&] { snapshot = records.unpack(packed); }))
        fuzz::require(records.unpack(records.pack(snapshot)) == snapshot,
                      "a measurement unpacks as it was packed");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static HistoryRecords records;
    const QByteArray bytes = fuzz::bytesOf(data, size);
    if (!bytes.startsWith('{')) {
        unpackAnything(records, bytes);
        return 0;
    }
    // What follows the JSON damages what it was packed to: a place and a byte.
    const qsizetype end = bytes.lastIndexOf('}') + 1;
    const auto snapshot = fuzz::readAndWrite<KeywordSnapshot>(bytes.first(end));
    if (!snapshot)
        return 0;
    QByteArray packed = records.pack(*snapshot);
    fuzz::require(records.unpack(packed) == *snapshot, "a measurement unpacks as it was packed");
    for (qsizetype i = end; i + 2 < bytes.size(); i += 3) {
        const auto place = std::uint8_t(bytes[i]) << 8U | std::uint8_t(bytes[i + 1]);
        packed[place % packed.size()] = bytes[i + 2];
    }
    unpackAnything(records, packed);
    return 0;
}
