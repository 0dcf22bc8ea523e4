// SPDX-License-Identifier: GPL-3.0-or-later
// A store whose state file may not grow, and the history beside it.
#pragma once

#include "json/json_writer.h"
#include "store/history_database.h"
#include "store/store_fixture.h"

#include <QFileInfo>

#include <algorithm>

namespace veltrix
{

class HistoryStore : public StoreTest
{
protected:
    HistoryStore() { restart(); }
    ~HistoryStore() override { stop(); }

    void restart()
    {
        stop();
        ASOStore::Arguments changed = arguments();
        changed.stateFileLimit = limit;
        store = std::make_unique<ASOStore>(std::move(changed));
        // What a run before has left.
        clock->advance(ASOStore::historyTidyingDelay);
    }
    [[nodiscard]] QString historyPath() const { return folder.filePath(text("history.sqlite")); }
    [[nodiscard]] bool hasMovedDays() const
    {
        if (!QFileInfo::exists(historyPath()))
            return false;
        SqliteDatabase database(historyPath());
        return database.prepare("SELECT 1 FROM observation LIMIT 1").step();
    }
    [[nodiscard]] std::optional<HistoryDatabase> history() const
    {
        return HistoryDatabase::open(historyPath());
    }
    /// Until nothing is on the way to the disk or from the file to the history.
    void finishMoving()
    {
        store->waitUntilSaved();
        waitFor([this] { return !store->historyMove(); });
    }
    template <class T>
    static T resultOf(Task<T> task)
    {
        const Outcome<T> outcome(std::move(task));
        waitFor([&] { return outcome.isDone(); });
        return outcome.value();
    }
    /// Small pages, so that most histories have several.
    std::vector<SharedSnapshot> allOf(const TrackedKeyword &keyword, size_t pageSize = 7)
    {
        std::vector<SharedSnapshot> all;
        std::optional<PageStart> next = PageStart{.size = pageSize};
        while (next) {
            MeasurementPage page = resultOf(store->measurements(keyword.id, *next, {}));
            std::ranges::move(page.measurements, std::back_inserter(all));
            next = page.nextDay ? std::optional(PageStart{*page.nextDay, pageSize}) : std::nullopt;
        }
        return all;
    }
    /// One measurement a day for so many days.
    void measureDaily(const TrackedKeyword &keyword, int days)
    {
        for (int day = 0; day < days; ++day) {
            clock->advance(Seconds(secondsPerDay));
            measure(keyword);
        }
        finishMoving();
    }
    static QByteArray json(const std::vector<SharedSnapshot> &snapshots)
    {
        return toJson(snapshots);
    }

    qint64 limit = 20'000;
};

} // namespace veltrix
