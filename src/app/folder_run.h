// SPDX-License-Identifier: GPL-3.0-or-later
// Doing something with the data folder without a window: by the process that has it.
#pragma once

#include "app/services.h"
#include "effects/data_folder_lock.h"
#include "effects/end_signals.h"
#include "effects/folder_talk.h"
#include "effects/task_scope.h"
#include "headless/rank_telling.h"
#include "headless/served_guests.h"

#include <QEventLoop>

#include <chrono>
#include <functional>
#include <memory>

namespace veltrix
{

/// How long one that ends may take to finish saving.
inline constexpr std::chrono::seconds endPatience{30};

/// The tables of the window.
ExportTables windowTables();

/// That the folder is another's who does not answer.
QString busyText(const QString &folder);

/// What this process does its work with when it has the folder.
class OwnData
{
public:
    /// `lock` holds the folder and outlives this.
    OwnData(const Bundle &bundle, const QString &folder, DataFolderLock &lock);

    [[nodiscard]] ASOStore &store() { return m_services.store(); }
    [[nodiscard]] RankTelling &telling() { return m_telling; }

private:
    std::shared_ptr<SettingsFile> m_settings;
    Services m_services;
    RankTelling m_telling;
};

/// Work of this process, which has the folder, until it is done or asked to end. Meanwhile it does
/// what other starts wish for, too.
class OwnRun
{
public:
    /// All of them outlive this.
    OwnRun(ASOStore &store, RankTelling &telling, DataFolderLock &lock);

    using Work = std::function<Task<void>(std::stop_token stop)>;

    enum class End {
        Done,
        /// The system has asked for it.
        Signal,
        /// A window wants the folder.
        MakesRoom,
    };
    /// The work tells its failures itself, and stops when it is asked to.
    End run(Work work);

private:
    Task<void> workAndServe(Work work);
    void stop(End reason);

    EndSignals m_ends;
    QEventLoop m_loop;
    bool m_isDone = false;
    End m_end = End::Done;
    std::stop_source m_stop;
    ServedGuests m_guests;
    TaskScope m_tasks;
};

/// The process that has the folder, when this one cannot have it within `patience`. Null when this
/// one has it, or when that one does not answer.
std::unique_ptr<FolderOwner> ownerOf(DataFolderLock &lock, const QByteArray &wish,
                                     std::chrono::milliseconds patience);

enum class OwnersEnd {
    /// The last line has come.
    Told,
    /// This process is to end: the owner then ends the wish by itself.
    Signal,
    /// The owner has ended before it was done.
    Left,
};

/// Gives each line of the owner to `take`, which says whether it is the last.
OwnersEnd listenTo(FolderOwner &owner, const std::function<bool(const QByteArray &line)> &take);

} // namespace veltrix
