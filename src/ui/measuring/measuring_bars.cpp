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
        bar->setMessage(status.message(), status.tone(), status.messageDetail());
        bar->setWork(status.work());
    };
    QObject::connect(&status, &MeasuringStatus::changed, bar, update);
    QObject::connect(bar, &StatusBar::stopRequested, &status, &MeasuringStatus::stop);
    update();
    return bar;
}

} // namespace veltrix
