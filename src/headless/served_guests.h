// SPDX-License-Identifier: GPL-3.0-or-later
// Measuring and exporting for starts without a window, by the one that has the data.
#pragma once

#include "effects/one_shot.h"
#include "effects/task_scope.h"
#include "headless/export_run.h"
#include "headless/measure_messages.h"

#include <QPointer>

#include <vector>

namespace veltrix
{

class ASOStore;
class FolderGuest;
class RankTelling;

/// Does what other starts wish for, and tells them how it goes. A wish ends with whoever wished it;
/// what was measured until then stays.
class ServedGuests
{
public:
    /// Both outlive this.
    ServedGuests(ASOStore &store, RankTelling &telling, ExportTables tables);

    /// Takes the guest's wish, a MeasureWish or an ExportWish as JSON. What is neither ends the
    /// connection.
    void serve(FolderGuest *guest);
    /// Ends when no wish is left.
    Task<void> allServed(std::stop_token stop);

private:
    Task<void> serveOne(QPointer<FolderGuest> guest, std::stop_token stop);
    Task<void> measureFor(QPointer<FolderGuest> guest, MeasureWish wish, std::stop_token stop);
    Task<void> exportFor(QPointer<FolderGuest> guest, ExportWish wish, std::stop_token stop);

    ASOStore &m_store;
    RankTelling &m_telling;
    ExportTables m_tables;
    int m_serving = 0;
    std::vector<OneShot<Done>> m_waitingForAll;
    TaskScope m_tasks;
};

} // namespace veltrix
