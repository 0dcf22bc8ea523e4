// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_coverage_panel.h"

#include "ui/competitors/keyword_check_table.h"
#include "ui/measuring/admission_texts.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/failure_card.h"
#include "ui_kit/widgets/status_bar.h"
#include "ui_kit/widgets/text_label.h"

#include <QHBoxLayout>

namespace veltrix
{

KeywordCoveragePanel::KeywordCoveragePanel(ASOStore &store, KeywordCoverage &coverage,
                                           const QString &country,
                                           const std::optional<QUuid> &appId, QWidget *parent)
    : QWidget(parent), m_store(store), m_coverage(coverage), m_country(country), m_appId(appId),
      m_model(new KeywordCheckModel(this)), m_table(new KeywordCheckTable(*m_model)),
      m_track(
          new Button(Button::Kind::Primary, QStringLiteral("plus"), tr("Track selected keywords"))),
      m_progressRow(new QWidget),
      m_progressText(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_progress(new ProgressLine), m_stop(new Button(Button::Kind::Link, QString())),
      m_failure(new FailureCard(QStringLiteral("coverageFailure"), tr("Retry keyword data"))),
      m_empty(new EmptyState(QStringLiteral("coverageEmpty"))),
      m_status(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_outcome(new TextLabel(TextStyle::Secondary, TextLabel::Tone::Secondary))
{
    setObjectName(QStringLiteral("coveragePanel"));
    build();
    connect(&m_coverage, &KeywordCoverage::restarted, m_model, &KeywordCheckModel::clear);
    connect(&m_coverage, &KeywordCoverage::checked, m_model, &KeywordCheckModel::add);
    connect(&m_coverage, &KeywordCoverage::progressChanged, this,
            &KeywordCoveragePanel::showProgress);
    connect(m_failure, &FailureCard::actionTriggered, &m_coverage, &KeywordCoverage::resume);
    connect(m_stop, &Button::clicked, this, [this] {
        if (m_coverage.phase() == KeywordCoverage::Phase::Checking)
            m_coverage.stop();
        else
            m_coverage.resume();
    });
    connect(m_model, &KeywordCheckModel::chosenChanged, this,
            &KeywordCoveragePanel::updateTrackButton);
    connect(m_track, &Button::clicked, this, &KeywordCoveragePanel::trackChosen);
    const auto endPromise = [this](bool hasEnded) {
        if (hasEnded && m_status->text() == keywordsSaved())
            m_status->hide();
    };
    connect(&m_store, &ASOStore::refreshProgressChanged, this,
            [this, endPromise] { endPromise(m_store.refreshProgress().isIdle()); });
    connect(&m_store, &ASOStore::historyRefreshErrorChanged, this,
            [this, endPromise] { endPromise(m_store.historyRefreshError().has_value()); });
    connect(&m_store, &ASOStore::keywordAdded, this, &KeywordCoveragePanel::updateTracked);
    connect(&m_store, &ASOStore::keywordRemoved, this, &KeywordCoveragePanel::updateTracked);
    updateTracked();
    updateTrackButton();
    showProgress();
}

void KeywordCoveragePanel::build()
{
    nameControl(m_track, QStringLiteral("trackKeywords"), tr("Track selected keywords"));
    m_progressText->setObjectName(QStringLiteral("coverageProgress"));
    m_stop->setObjectName(QStringLiteral("coverageStop"));
    m_status->setObjectName(QStringLiteral("coverageStatus"));
    m_status->setWrapping(TextLabel::Wrapping::Wrapped);
    m_outcome->setObjectName(QStringLiteral("coverageOutcome"));
    m_outcome->setWrapping(TextLabel::Wrapping::Wrapped);
    m_empty->setContent({QStringLiteral("key.fill"), tr("No keywords found"),
                         tr("This app has no keyword phrases in its public listing."), QString()});

    auto *head = new QHBoxLayout;
    head->setSpacing(spacing::m);
    head->addWidget(new TextLabel(TextStyle::BodySemibold, TextLabel::Tone::Text, tr("Keywords")),
                    1);
    head->addWidget(m_track);
    auto *progress = new QHBoxLayout(m_progressRow);
    progress->setContentsMargins(0, 0, 0, 0);
    progress->setSpacing(spacing::m);
    progress->addWidget(m_progressText, 1);
    m_progress->setFixedWidth(m_progress->sizeHint().width() / 2);
    progress->addWidget(m_progress);
    progress->addWidget(m_stop);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::s);
    layout->addLayout(head);
    layout->addWidget(m_status);
    layout->addWidget(m_outcome);
    layout->addWidget(m_progressRow);
    layout->addWidget(m_failure);
    layout->addWidget(m_table);
    layout->addWidget(m_empty);
    layout->addStretch(1);
    m_status->hide();
    m_outcome->hide();
}

void KeywordCoveragePanel::showProgress()
{
    using Phase = KeywordCoverage::Phase;
    const Phase phase = m_coverage.phase();
    const qsizetype done = m_coverage.checks().size();
    const qsizetype total = m_coverage.total();
    const bool isChecking = phase == Phase::Checking;
    m_progressRow->setVisible(isChecking || phase == Phase::Stopped);
    m_failure->setMessage(phase == Phase::Failed ? m_coverage.error() : QString());
    m_empty->setVisible(phase == Phase::Finished && total == 0);
    m_table->setVisible(total > 0);
    if (isChecking) {
        m_progressText->setText(tr("Checking “%1” · %2 of %3")
                                    .arg(m_coverage.pending().constFirst())
                                    .arg(done + 1)
                                    .arg(total));
        m_stop->setText(tr("Stop"));
        m_stop->setAccessibleName(tr("Stop checking keywords"));
    } else if (phase == Phase::Stopped) {
        m_progressText->setText(tr("Stopped · %1 of %2 checked").arg(done).arg(total));
        m_stop->setText(tr("Continue"));
        m_stop->setAccessibleName(tr("Continue checking keywords"));
    }
    m_progressText->setAccessibleName(m_progressText->text());
    m_progress->setFraction(total > 0 ? std::optional(double(done) / double(total)) : std::nullopt);
}

void KeywordCoveragePanel::updateTracked()
{
    QSet<QString> tracked;
    if (m_appId) {
        const QList<TrackedKeyword> keywords = m_store.keywordsOfApp(*m_appId);
        for (const TrackedKeyword &keyword : keywords) {
            if (keyword.country == m_country.toUpper())
                tracked.insert(keyword.keyword);
        }
    }
    m_model->setTracked(tracked);
}

void KeywordCoveragePanel::updateTrackButton()
{
    const bool hasApp = m_appId && m_store.app(*m_appId);
    m_track->setEnabled(hasApp && !m_model->chosen().isEmpty());
    m_track->setToolTip(hasApp ? QString() : tr("Select an app first"));
}

void KeywordCoveragePanel::trackChosen()
{
    const QStringList chosen = m_model->chosen();
    if (!m_appId || !m_store.app(*m_appId) || chosen.isEmpty()) {
        updateTrackButton();
        return;
    }
    try {
        const KeywordAdmission admission = m_store.addTrackedKeywords(*m_appId, chosen, m_country);
        // What was refused stays chosen.
        updateTracked();
        showOutcome(admissionStatus(admission, !m_store.hasUnsavedChange()),
                    refusalLines(admission.refused));
        // Queued last: should it fail at once, its own message comes after this one.
        m_store.queueKeywordRefreshes(admission.kept);
    } catch (const StoreError &error) {
        showOutcome({error.description(), QString(), true}, {});
    }
}

void KeywordCoveragePanel::showOutcome(const AdmissionStatus &status, QStringList lines)
{
    m_status->setTone(status.isProblem ? TextLabel::Tone::Red : TextLabel::Tone::Secondary);
    m_status->setText(status.message);
    if (!status.detail.isEmpty())
        lines.prepend(status.detail);
    m_outcome->setText(lines.join(u'\n'));
    for (TextLabel *label : {m_status, m_outcome}) {
        label->setAccessibleName(label->text());
        label->setVisible(!label->text().isEmpty());
        if (!label->text().isEmpty())
            announceNameChange(label);
    }
}

} // namespace veltrix
