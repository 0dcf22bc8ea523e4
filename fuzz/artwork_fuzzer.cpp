// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as an image: whole or not, and no image is whole without its second half.
#include "clients/image_wholeness.h"
#include "fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    const QByteArray bytes = fuzz::bytesOf(data, size);
    const bool isWhole = isWholeImage(bytes);
    // Bytes that belong to no image leave a whole one whole, where its end is found by its parts.
    const bool isFoundByParts = bytes.startsWith("\x89PNG\r\n\x1a\n") || bytes.startsWith("RIFF");
    if (isWhole && isFoundByParts)
        fuzz::require(isWholeImage(bytes + "more"), "what follows an image leaves it whole");
    return 0;
}
