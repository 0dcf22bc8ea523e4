// SPDX-License-Identifier: GPL-3.0-or-later
// The refresh that goes with the window's activity.
#pragma once

#include "store/keyword_refreshes.h"
#include "store/refresh_loop.h"

#include <QObject>

namespace veltrix
{

class ASOStore;
class MeasuringStatus;

/// Refreshes all rankings by itself while it is active, and heeds what the user does: a refresh of
/// his own ends a rest and counts as one, "Stop" begins a rest. A state that was read late is
/// measured at once, as at a start.
class AutomaticRefresh final : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this.
    AutomaticRefresh(ASOStore &store, MeasuringStatus &measuring, QObject *parent = nullptr);

    void setActive(bool active) { m_loop.setActive(active); }
    /// What made refreshes fail may be over: the network has returned.
    void retrySoon() { m_loop.retrySoon(); }
    /// By which rule a ranking is due. What is due by another than before is measured at once.
    void setDue(KeywordRefreshes::Due rule);

private:
    void startOver();

    KeywordRefreshes &m_refreshes;
    KeywordRefreshes::Due m_due = KeywordRefreshes::Due::After24Hours;
    RefreshLoop m_loop;
};

} // namespace veltrix
