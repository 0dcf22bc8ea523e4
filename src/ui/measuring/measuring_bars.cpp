// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/measuring/measuring_bars.h"

#include "ui_kit/widgets/banner.h"

namespace veltrix
{

Banner *makeRefreshBanner(MeasuringStatus &status)
{
    auto *banner =
        new Banner(QStringLiteral("refreshBanner"), QStringLiteral("exclamationmark.triangle"),
                   MeasuringStatus::tr("Refresh"));
    const auto update = [&status, banner] {
        const MeasuringStatus::Problem problem = status.problem();
        // What stands there already is not announced again.
        if (problem != MeasuringStatus::Problem{banner->message(), banner->detail()})
            banner->setMessage(problem.message, problem.detail);
        banner->setActionEnabled(status.mayRefresh());
    };
    QObject::connect(&status, &MeasuringStatus::changed, banner, update);
    QObject::connect(banner, &Banner::actionTriggered, &status, &MeasuringStatus::refresh);
    update();
    return banner;
}

StatusBar *makeStatusBar(MeasuringStatus &status)
{
    auto *bar = new StatusBar;
    const auto update = [&status, bar] {
        if (bar->message() != status.message() || bar->detail() != status.messageDetail())
            bar->setMessage(status.message(), status.tone(), status.messageDetail());
        const auto work = status.work();
        if (bar->work() != work)
            bar->setWork(work);
    };
    QObject::connect(&status, &MeasuringStatus::changed, bar, update);
    QObject::connect(bar, &StatusBar::stopRequested, &status, &MeasuringStatus::stop);
    update();
    return bar;
}

} // namespace veltrix
