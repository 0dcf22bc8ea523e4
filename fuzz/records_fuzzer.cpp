// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a record: an error, or a record that reads back from what it writes.
#include "model/app_profile.h"
#include "model/keyword_snapshot.h"
#include "model/tracked_competitor.h"
#include "model/tracked_keyword.h"
#include "read_and_write.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    const QByteArray bytes = fuzz::bytesOf(data, size);
    fuzz::readAndWrite<KeywordSnapshot>(bytes);
    fuzz::readAndWrite<AppProfile>(bytes);
    fuzz::readAndWrite<TrackedKeyword>(bytes);
    fuzz::readAndWrite<TrackedCompetitor>(bytes);
    return 0;
}
