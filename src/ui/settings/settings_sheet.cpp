// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/settings_sheet.h"

#include "ui/preferences/preferences.h"
#include "ui/settings/settings_section.h"
#include "ui/settings/updater_settings_view.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/storefront_picker.h"
#include "ui_kit/widgets/text_label.h"

#include <QScrollArea>

namespace veltrix
{

namespace
{

constexpr int sheetWidth = 560;

} // namespace

SettingsSheet::SettingsSheet(Preferences &preferences, const AppInformation &information,
                             UpdaterInterface *updater, OpenUrl openUrl, QWidget *parent)
    : QWidget(parent), m_openUrl(std::move(openUrl)),
      m_sections(
          makeColumn(spacing::xl, nullptr, {spacing::xl, spacing::xs, spacing::xl, spacing::xl}))
{
    nameControl(this, QStringLiteral("settingsSheet"), tr("Settings"));
    auto *done = new Button(Button::Kind::Primary, tr("Done"));
    nameControl(done, QStringLiteral("settingsDone"), tr("Done"));
    connect(done, &Button::clicked, this, &SettingsSheet::closeRequested);

    auto *header = new QHBoxLayout;
    header->setContentsMargins(spacing::xl, spacing::xl, spacing::xl, spacing::m);
    header->addWidget(new TextLabel(TextStyle::Title, TextLabel::Tone::Text, tr("Settings")), 1);
    header->addWidget(done);

    m_sections->addWidget(researchSection(preferences, information.research));
    m_sections->addWidget(updatesSection(updater));
    m_sections->addWidget(helpSection(information));
    m_sections->addWidget(aboutSection(information));
    m_sections->addStretch(1);
    auto *content = new QWidget;
    content->setLayout(m_sections);
    QScrollArea *scroll = makeScrollPage(QStringLiteral("settingsScroll"), tr("Settings"), content);
    scroll->setFocusPolicy(Qt::NoFocus);
    takeScrollBarFromMargin(*scroll, *m_sections);

    auto *layout = makeColumn(0, this, {0, 0, 0, spacing::s});
    layout->addLayout(header);
    layout->addWidget(scroll, 1);
    done->setFocus();
}

QSize SettingsSheet::sizeHint() const
{
    // Header, sections at their full height; a smaller window makes them scroll.
    const int sections = m_sections->heightForWidth(sheetWidth);
    const int header = controlHeight(font()) + spacing::xl + spacing::m;
    return {sheetWidth, header + sections + spacing::s};
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

QWidget *SettingsSheet::updatesSection(UpdaterInterface *updater)
{
    auto *section = new SettingsSection(tr("Updates"));
    if (updater) {
        new UpdaterSettingsView(*updater, m_openUrl, *section);
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
    const auto addLink = [&](const QString &objectName, const QString &symbol, const QString &text,
                             const QUrl &url) {
        auto *link = new Button(Button::Kind::Link, symbol, text);
        nameControl(link, objectName, text);
        link->setToolTip(url.isEmpty() ? tr("Not available in this build") : url.toDisplayString());
        link->setEnabled(!url.isEmpty());
        connect(link, &Button::clicked, this, [this, url] { m_openUrl(url); });
        section->addLink(link);
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
    return section;
}

QWidget *SettingsSheet::aboutSection(const AppInformation &information)
{
    auto *section = new SettingsSection(tr("About"));
    auto *version =
        new TextLabel(TextStyle::Body, TextLabel::Tone::Secondary, information.versionText);
    version->setObjectName(QStringLiteral("versionText"));
    section->addRow(tr("Version"), version);
    return section;
}

} // namespace veltrix
