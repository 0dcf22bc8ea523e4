// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a record: an error, or a record that reads back from what it writes.
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "model/app_profile.h"
#include "model/itunes_app_result.h"
#include "model/keyword_snapshot.h"

#include <cstdlib>

namespace
{

template <class Record>
void readAndWrite(const QByteArray &bytes)
{
    Record record;
    try {
        record = veltrix::fromJson<Record>(bytes);
    } catch (const veltrix::DecodingError &) {
        return;
    }
    if (!(veltrix::fromJson<Record>(veltrix::toJson(record)) == record))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    readAndWrite<veltrix::KeywordSnapshot>(bytes);
    readAndWrite<veltrix::ITunesSearchResponse>(bytes);
    readAndWrite<veltrix::AppProfile>(bytes);
    return 0;
}
