// SPDX-License-Identifier: GPL-3.0-or-later
// Measuring chosen keywords once, for whoever has no window.
#pragma once

#include "effects/task_scope.h"
#include "headless/measure_messages.h"
#include "model/tracked_keyword.h"
#include "store/keyword_refreshes.h"

#include <functional>

namespace veltrix
{

class ASOStore;
class RankTelling;

/// Measures what a wish is about, one keyword after another, by the store's own way and pace: what
/// has no measurement on the current UTC day, or all of it. Keywords that fail do not end it, but
/// so many in a row do: then it is the service that fails.
class MeasureRun
{
public:
    /// Failures in a row that end it.
    static constexpr int mostFailures = 3;

    using Tell = std::function<void(const MeasureMessage &message)>;

    /// `store` and `telling` outlive this. `tell` is called for every message, the last one
    /// included.
    MeasureRun(ASOStore &store, RankTelling &telling, Tell tell);

    /// When stopped, it ends with what was measured until then and tells the rest as left: what was
    /// measured is saved.
    Task<MeasureSummary> run(MeasureWish wish, std::stop_token stop);

private:
    [[nodiscard]] QList<QUuid> sortOut(const QList<TrackedKeyword> &chosen, bool all,
                                       MeasureSummary &summary) const;
    [[nodiscard]] MeasuredKeyword turnOf(const TrackedKeyword &keyword,
                                         const std::optional<QString> &problem) const;
    Task<MeasureSummary> measure(QList<TrackedKeyword> chosen, bool all, std::stop_token stop);
    Task<std::optional<RankNotice>> notice(QList<TrackedKeyword> measured, std::stop_token stop);
    Task<void> allSaved(std::stop_token stop);

    ASOStore &m_store;
    RankTelling &m_telling;
    Tell m_tell;
    TaskScope m_tasks;
};

} // namespace veltrix
