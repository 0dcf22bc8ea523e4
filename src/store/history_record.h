// SPDX-License-Identifier: GPL-3.0-or-later
// One measurement in the form in which the history keeps it.
#pragma once

#include "model/keyword_snapshot.h"

#include <QByteArray>
#include <QByteArrayView>

#include <memory>

namespace veltrix
{

/// The record's JSON, as the state file has it, packed by zlib with a dictionary of what such
/// records have in common. The first byte is the number of that dictionary: a dictionary is never
/// changed, a better one gets the next number. A snapshot's 3.4 kB become some 0.7.
class HistoryRecords
{
public:
    HistoryRecords();
    ~HistoryRecords();
    HistoryRecords(HistoryRecords &&) noexcept;
    HistoryRecords &operator=(HistoryRecords &&) noexcept;

    [[nodiscard]] QByteArray pack(const KeywordSnapshot &snapshot);
    /// Throws DecodingError for what pack() has not made, or a later version's has.
    [[nodiscard]] KeywordSnapshot unpack(QByteArrayView packed);

private:
    struct Streams;
    std::unique_ptr<Streams> m_streams;
};

} // namespace veltrix
