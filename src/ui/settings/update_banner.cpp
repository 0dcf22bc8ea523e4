// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/update_banner.h"

#include "ui/settings/updater_interface.h"
#include "ui_kit/widgets/banner.h"

#include <QCoreApplication>

namespace veltrix
{

namespace
{

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(UpdateBanner)
};

void show(Banner &banner, const UpdaterStatus &status)
{
    const UpdaterAnnouncement announced = status.announcement.value_or(UpdaterAnnouncement());
    if (announced.isCritical)
        banner.setLook(QStringLiteral("exclamationmark.triangle"), Token::Red);
    else
        banner.setLook(QStringLiteral("info.circle"), Token::Accent);
    banner.setAction(announced.offersAction ? status.action : Texts::tr("Show Update"));
    banner.setMessage(announced.text);
}

} // namespace

QWidget *makeUpdateBanner(UpdaterInterface &updater, std::function<void()> openSettings)
{
    auto *banner = new Banner(QStringLiteral("updateBanner"), QString(), Texts::tr("Show Update"));
    banner->setActionSymbol(QString());
    banner->makeDismissible();
    QObject::connect(banner, &Banner::actionTriggered, banner,
                     [&updater, open = std::move(openSettings)] {
                         const auto announced = updater.status().announcement;
                         if (announced && announced->offersAction)
                             updater.performAction();
                         else
                             open();
                     });
    QObject::connect(banner, &Banner::dismissed, banner, [&updater] { updater.dismiss(); });
    QObject::connect(&updater, &UpdaterInterface::changed, banner,
                     [&updater, banner] { show(*banner, updater.status()); });
    show(*banner, updater.status());
    return banner;
}

} // namespace veltrix
