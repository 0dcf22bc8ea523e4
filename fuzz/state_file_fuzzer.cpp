// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a state file: refused, or a state that reads as it was written. Read in pieces it is
// the same as read whole.
#include "read_and_write.h"
#include "store/state_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace veltrix;
    const QByteArray content = fuzz::bytesOf(data, size);
    const auto whole = fuzz::readAndWrite<PersistedState>(content);
    const FileReader file(fuzz::scratchFile(QStringLiteral("state.json"), content));
    for (const qsizetype pieceSize : {64, 4096}) {
        if (const auto inPieces = readStateInPieces(file, pieceSize)) {
            fuzz::require(whole && toJson(*inPieces) == toJson(*whole),
                          "pieces come to the same as the whole");
        }
        PersistedState state;
        const bool isAccepted = fuzz::isAccepted([&] { state = readState(file, pieceSize); });
        fuzz::require(isAccepted == whole.has_value(), "what can be read is read");
    }
    return 0;
}
