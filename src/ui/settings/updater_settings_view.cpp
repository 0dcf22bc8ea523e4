// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/updater_settings_view.h"

#include "ui/settings/settings_section.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/status_bar.h"
#include "ui_kit/widgets/text_label.h"

#include <QCheckBox>

namespace veltrix
{

UpdaterSettingsView::UpdaterSettingsView(UpdaterInterface &updater,
                                         std::function<void(const QUrl &)> openUrl,
                                         SettingsSection &section)
    : QWidget(&section), m_updater(updater), m_openUrl(std::move(openUrl)),
      m_automatic(new QCheckBox(tr("Automatically check for updates"))),
      m_check(new Button(Button::Kind::Standard, tr("Check Now"))),
      m_status(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                             QStringLiteral("updaterStatus"))),
      m_progress(new ProgressLine), m_stop(new Button(Button::Kind::Link, tr("Stop"))),
      m_action(new Button(Button::Kind::Standard, QString())), m_statusRow(statusRow()),
      m_notes(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Text, QString(),
                            QStringLiteral("updateNotes"))),
      m_notesLink(new Button(Button::Kind::Link, QStringLiteral("doc.text"), tr("Release Notes")))
{
    hide(); // Its parts stand in the section; it only ties them to the updater.
    nameControl(m_automatic, QStringLiteral("automaticUpdates"), m_automatic->text());
    nameControl(m_check, QStringLiteral("checkForUpdates"), tr("Check Now"));
    m_notes->setContentsMargins(0, 0, 0, spacing::s);
    nameControl(m_notesLink, QStringLiteral("updateNotesLink"), tr("Release Notes"));
    section.addRow(m_automatic);
    section.addRow(tr("Check for updates"), m_check);
    section.addRow(m_statusRow);
    section.addContinuation(m_notes);
    section.addLink(m_notesLink);
    section.addNote(tr("When enabled, Veltrix checks on launch and periodically while open. Check "
                       "Now works even when automatic checks are off."));
    connect(m_automatic, &QCheckBox::toggled, this,
            [this](bool on) { m_updater.setAutomaticallyChecksForUpdates(on); });
    connect(m_check, &Button::clicked, this, [this] { m_updater.checkForUpdates(); });
    connect(m_stop, &Button::clicked, this, [this] { m_updater.stop(); });
    connect(m_action, &Button::clicked, this, [this] { m_updater.performAction(); });
    connect(m_notesLink, &Button::clicked, this,
            [this] { m_openUrl(m_updater.status().notesLink); });
    connect(&m_updater, &UpdaterInterface::changed, this, &UpdaterSettingsView::showState);
    showState();
}

QWidget *UpdaterSettingsView::statusRow()
{
    nameControl(m_stop, QStringLiteral("stopUpdate"), tr("Stop"));
    // It may hold the path of a package.
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *parts = new QWidget;
    auto *row = makeRow(spacing::m, parts, {0, spacing::xs, 0, spacing::xs});
    row->addWidget(m_status, 1);
    row->addWidget(m_progress);
    row->addWidget(m_stop);
    row->addWidget(m_action);
    return parts;
}

void UpdaterSettingsView::showState()
{
    m_automatic->setChecked(m_updater.automaticallyChecksForUpdates());
    m_check->setEnabled(m_updater.canCheckForUpdates());
    const UpdaterStatus status = m_updater.status();
    m_statusRow->setVisible(!status.text.isEmpty());
    m_status->setText(status.text);
    m_status->setAccessibleName(status.text);
    m_progress->setVisible(status.fraction.has_value());
    m_progress->setFraction(status.fraction);
    m_stop->setVisible(status.canStop);
    m_action->setVisible(!status.action.isEmpty());
    m_action->setText(status.action);
    nameControl(m_action, QStringLiteral("updaterAction"), status.action);
    m_notes->setVisible(!status.notes.isEmpty());
    m_notes->setText(status.notes);
    m_notesLink->setVisible(!status.notesLink.isEmpty());
    m_notesLink->setToolTip(status.notesLink.toDisplayString());
}

} // namespace veltrix
