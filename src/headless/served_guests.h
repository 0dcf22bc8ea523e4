// SPDX-License-Identifier: GPL-3.0-or-later
// Measuring for starts without a window, by the one that has the data.
#pragma once

#include "effects/one_shot.h"
#include "effects/task_scope.h"

#include <QPointer>

#include <vector>

namespace veltrix
{

class ASOStore;
class FolderGuest;
class RankTelling;

/// Measures what other starts wish for, and tells them how it goes. A wish ends with whoever wished
/// it; what was measured until then stays.
class MeasureGuests
{
public:
    /// Both outlive this.
    MeasureGuests(ASOStore &store, RankTelling &telling);

    /// Takes the guest's wish, a MeasureWish as JSON. What is none ends the connection.
    void serve(FolderGuest *guest);
    /// Ends when no wish is left.
    Task<void> allServed(std::stop_token stop);

private:
    Task<void> measureFor(QPointer<FolderGuest> guest, std::stop_token stop);

    ASOStore &m_store;
    RankTelling &m_telling;
    int m_serving = 0;
    std::vector<OneShot<Done>> m_waitingForAll;
    TaskScope m_tasks;
};

} // namespace veltrix
