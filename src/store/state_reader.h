// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a state file, a large one in pieces.
#pragma once

#include "effects/file_reader.h"
#include "store/persisted_state.h"

#include <optional>

namespace veltrix
{

/// Bytes of a state file that are read and parsed at a time: what fits a processor's cache.
inline constexpr qsizetype usualPieceSize = 256 * 1024;

/// The state in a file. Throws FileError or DecodingError.
///
/// A large file as Veltrix itself writes it is read in pieces of whole snapshots, so that neither
/// its text nor the parser's index of it is ever in memory as a whole. Any other file, and any that
/// does not come out right in pieces, is read as one text; the result is the same.
PersistedState readState(const FileReader &file, qsizetype pieceSize = usualPieceSize);

/// The state in a file that can be read in pieces; nothing when it has to be read as one text.
std::optional<PersistedState> readStateInPieces(const FileReader &source, qsizetype pieceSize);

} // namespace veltrix
