// SPDX-License-Identifier: GPL-3.0-or-later
// Room on the heap for many small blocks at once.
#pragma once

#include <QtGlobal>

namespace veltrix
{

/// While one exists, the heap grows in one step of about `expected` bytes instead of many small
/// ones. What was not needed is given back at the end. Without effect for small amounts.
class HeapRoom
{
public:
    explicit HeapRoom(qint64 expected);
    ~HeapRoom();
    Q_DISABLE_COPY_MOVE(HeapRoom)

private:
    bool m_isMade = false;
};

} // namespace veltrix
