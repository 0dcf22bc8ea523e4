// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a date: no value, or one that reads back from its printed form to the millisecond.
#include "fuzz_target.h"
#include "model/date.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto date = veltrix::parseInternetDateTime(text);
    if (!date)
        return 0;
    const auto printed = veltrix::formatInternetDateTime(*date);
    // Offsets can leave the years that four digits hold.
    if (printed.size() != 24 || printed.startsWith(u'-'))
        return 0;
    const auto back = veltrix::parseInternetDateTime(printed, veltrix::FractionalSeconds::Required);
    veltrix::fuzz::require(back && std::abs((*back - *date).count()) <= 0.0011,
                           "a printed date reads back");
    return 0;
}
