// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/settings_sheet.h"

#include "ui/preferences/preferences.h"
#include "ui/settings/daily_measuring_view.h"
#include "ui/settings/settings_section.h"
#include "ui/settings/updater_settings_view.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/segmented_control.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_label.h"

#include <QCheckBox>

#include <algorithm>
#include <array>

namespace veltrix
{

namespace
{

constexpr int sheetWidth = 560;

/// From how many places on a movement may be told.
constexpr std::array leastPlaces{1, 3, 5, 10};

} // namespace

SettingsSheet::SettingsSheet(Preferences &preferences, const AppInformation &information,
                             DailyMeasuring &daily, UpdaterInterface *updater, Outside outside,
                             QWidget *parent)
    : SheetFrame(QStringLiteral("settingsSheet"), tr("Settings"), Body::Scrolled, {sheetWidth, 0},
                 parent),
      m_outside(std::move(outside))
{
    addCloseButton(QStringLiteral("settingsDone"), QString(), tr("Done"), tr("Done"))->setFocus();
    body()->setSpacing(spacing::m);
    body()->setContentsMargins(spacing::xl, spacing::m, spacing::xl, spacing::l);
    body()->addWidget(appearanceSection(preferences));
    body()->addWidget(researchSection(preferences, information.research));
    body()->addWidget(dailySection(daily));
    body()->addWidget(notificationsSection(preferences));
    body()->addWidget(updatesSection(updater));
    body()->addWidget(helpSection(information));
    body()->addWidget(aboutSection(information));
    body()->addStretch(1);
}

QSize SettingsSheet::sizeHint() const
{
    // The sections at their full height; a smaller window makes them scroll.
    const int width = SheetFrame::sizeHint().width();
    const QMargins edge = layout()->contentsMargins();
    const int inside = width - edge.left() - edge.right();
    return {width, edge.top() + headerHeight() + body()->heightForWidth(inside) + edge.bottom()};
}

QWidget *SettingsSheet::appearanceSection(Preferences &preferences)
{
    auto *section = new SettingsSection(tr("Appearance"));
    // In the order of ThemeChoice.
    auto *theme =
        new SegmentedControl(QStringLiteral("theme"), tr("Theme"), QStringLiteral("theme"),
                             {{tr("System"), tr("As the system")},
                              {tr("Light"), tr("Light")},
                              {tr("Dark"), tr("Dark")}});
    theme->choose(int(preferences.theme()));
    section->addRow(tr("Theme"), theme);
    connect(theme, &SegmentedControl::changed, this, [this, &preferences](int index) {
        const auto choice = static_cast<ThemeChoice>(index);
        preferences.setTheme(choice);
        Q_EMIT themeChanged(choice);
    });
    return section;
}

QWidget *SettingsSheet::researchSection(Preferences &preferences,
                                        const ResearchServiceInformation &research)
{
    auto *section = new SettingsSection(tr("Research"));
    auto *picker =
        new StorefrontPicker(QStringLiteral("defaultStorefront"), tr("Default storefront"),
                             StorefrontPicker::Offer::Storefronts);
    picker->setCode(preferences.preferredStorefrontCountry());
    section->addRow(tr("Default storefront"), picker);
    section->addNote(tr("Used when searching for apps. The Keywords view still opens with All "
                        "Countries selected."));
    connect(picker, &StorefrontPicker::picked, this,
            [this, &preferences](const std::optional<QString> &code) {
                preferences.setPreferredStorefrontCountry(*code);
                Q_EMIT preferredStorefrontChanged(*code);
            });

    QString service;
    QString note;
    switch (research.kind) {
    case ResearchServiceInformation::Kind::Direct:
        service = tr("App Store search");
        note = tr("Keywords are searched directly in Apple's public App Store search service.");
        break;
    case ResearchServiceInformation::Kind::Research:
        service = tr("Research service");
        note = research.detail.isEmpty()
                   ? tr("Keywords are searched through the research service.")
                   : tr("Keywords are searched through the research service at %1.")
                         .arg(research.detail);
        break;
    case ResearchServiceInformation::Kind::Misconfigured:
        service = tr("Not available");
        note = research.detail;
        break;
    }
    auto *value = new TextLabel(TextStyle::Body, TextLabel::Tone::Secondary, service);
    value->setObjectName(QStringLiteral("researchService"));
    section->addRow(tr("Keyword searches"), value);
    section->addNote(note, QStringLiteral("researchServiceNote"));
    return section;
}

QWidget *SettingsSheet::dailySection(DailyMeasuring &daily)
{
    auto *section = new SettingsSection(tr("Every Day"));
    new DailyMeasuringView(daily, *section);
    return section;
}

QWidget *SettingsSheet::notificationsSection(Preferences &preferences)
{
    auto *section = new SettingsSection(tr("Notifications"));
    const DigestChoice chosen = preferences.digestChoice();
    QCheckBox *movements = nullptr;
    const auto addKind = [&](const QString &objectName, const QString &text,
                             bool DigestChoice::*kind) {
        auto *box = new QCheckBox(text);
        nameControl(box, objectName, text);
        box->setChecked(chosen.*kind);
        connect(box, &QCheckBox::toggled, this, [&preferences, kind](bool on) {
            DigestChoice choice = preferences.digestChoice();
            choice.*kind = on;
            preferences.setDigestChoice(choice);
        });
        section->addRow(box);
        return box;
    };
    movements = addKind(QStringLiteral("tellMovements"), tr("Keywords that rose or fell"),
                        &DigestChoice::movements);

    QList<SegmentedControl::Choice> choices;
    for (const int count : leastPlaces)
        choices.append(
            {QString::number(count), count == 1 ? tr("1 place") : tr("%L1 places").arg(count)});
    auto *places = new SegmentedControl(QStringLiteral("tellLeastPlaces"), tr("By at least"),
                                        QStringLiteral("tellLeastPlaces"), choices);
    // A file edited by hand may hold another number.
    const auto *const found =
        std::lower_bound(leastPlaces.begin(), leastPlaces.end() - 1, chosen.leastPlaces);
    places->choose(int(found - leastPlaces.begin()));
    places->setEnabled(chosen.movements);
    connect(places, &SegmentedControl::changed, this, [&preferences](int index) {
        DigestChoice choice = preferences.digestChoice();
        choice.leastPlaces = leastPlaces[size_t(index)];
        preferences.setDigestChoice(choice);
    });
    connect(movements, &QCheckBox::toggled, places, &QWidget::setEnabled);
    section->addRow(tr("By at least so many places"), places);

    addKind(QStringLiteral("tellTopTen"), tr("Keywords that entered or left the top 10"),
            &DigestChoice::topTen);
    addKind(QStringLiteral("tellResults"), tr("Keywords that entered or left the results"),
            &DigestChoice::results);
    addKind(QStringLiteral("tellBests"), tr("New best ranks"), &DigestChoice::bests);
    section->addNote(tr("Told in one desktop notification after a daily run that has measured "
                        "everything, when something of it happened."));
    return section;
}

QWidget *SettingsSheet::updatesSection(UpdaterInterface *updater)
{
    auto *section = new SettingsSection(tr("Updates"));
    if (updater) {
        new UpdaterSettingsView(*updater, m_outside.openUrl, *section);
        return section;
    }
    section->addRow(makeParagraph(TextStyle::Body, TextLabel::Tone::Secondary,
                                  tr("Update checks are available in signed release builds."),
                                  QStringLiteral("updatesUnavailable")));
    return section;
}

QWidget *SettingsSheet::helpSection(const AppInformation &information)
{
    auto *section = new SettingsSection(tr("Help"));
    QList<Button *> links;
    const auto addLink = [&](const QString &objectName, const QString &symbol, const QString &text,
                             const QUrl &url) {
        auto *link = new Button(Button::Kind::Link, symbol, text);
        nameControl(link, objectName, text);
        link->setToolTip(url.isEmpty() ? tr("Not available in this build") : url.toDisplayString());
        link->setEnabled(!url.isEmpty());
        connect(link, &Button::clicked, this, [this, url] { m_outside.openUrl(url); });
        links.append(link);
    };
    QUrl mail;
    if (!information.supportEmail.isEmpty()) {
        mail.setScheme(QStringLiteral("mailto"));
        mail.setPath(information.supportEmail);
    }
    addLink(QStringLiteral("supportLink"), QStringLiteral("envelope"), tr("Support"), mail);
    addLink(QStringLiteral("privacyLink"), QStringLiteral("hand.raised"), tr("Privacy Policy"),
            information.privacyPolicy);
    addLink(QStringLiteral("termsLink"), QStringLiteral("doc.text"), tr("Terms of Use"),
            information.termsOfUse);
    section->addLinks(links);
    return section;
}

QWidget *SettingsSheet::aboutSection(const AppInformation &information)
{
    auto *section = new SettingsSection(tr("About"));
    auto *version =
        new TextLabel(TextStyle::Body, TextLabel::Tone::Secondary, information.versionText);
    version->setObjectName(QStringLiteral("versionText"));
    auto *folder =
        new Button(Button::Kind::Standard, QStringLiteral("folder"), tr("Show data folder"));
    nameControl(folder, QStringLiteral("showDataFolder"), tr("Show data folder"));
    connect(folder, &Button::clicked, this, [this] { m_outside.showDataFolder(); });
    auto *row = new QWidget;
    auto *parts = makeRow(spacing::m, row);
    parts->addWidget(new TextLabel(TextStyle::Body, TextLabel::Tone::Text, tr("Version")));
    parts->addWidget(version, 1);
    parts->addWidget(folder);
    section->addRow(row);
    return section;
}

} // namespace veltrix
