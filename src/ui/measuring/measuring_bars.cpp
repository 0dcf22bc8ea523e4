// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/measuring/measuring_bars.h"

#include "store/aso_store.h"
#include "ui_kit/widgets/banner.h"

#include <QLocale>

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

void sayHistoryMoves(const ASOStore &store, MeasuringStatus &status)
{
    QObject::connect(
        &store, &ASOStore::historyMoveChanged, &status,
        [&store, &status, hasSaid = false]() mutable {
            // What the days of a usual move number.
            constexpr qsizetype usual = 2'000;
            const std::optional<HistoryMove> move = store.historyMove();
            if (move && move->total > usual) {
                hasSaid = true;
                status.say(
                    MeasuringStatus::tr("Moving older measurements to the history · %1 of %2")
                        .arg(QLocale().toString(move->done), QLocale().toString(move->total)));
            } else if (!move && std::exchange(hasSaid, false)) {
                status.say(QString());
            }
        });
}

} // namespace veltrix
