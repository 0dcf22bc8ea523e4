// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/competitors/keyword_coverage_panel.h"

#include "ui/competitors/keyword_check_table.h"
#include "ui_kit/accessibility/accessibility.h"
#include "ui_kit/widgets/banner.h"
#include "ui_kit/widgets/button.h"
#include "ui_kit/widgets/empty_state.h"
#include "ui_kit/widgets/layouts.h"
#include "ui_kit/widgets/status_bar.h"
#include "ui_kit/widgets/text_label.h"

namespace veltrix
{

namespace
{

/// Shows the text and says it aloud; an empty one hides the label.
void say(TextLabel &note, const QString &text)
{
    note.setText(text);
    note.setAccessibleName(text);
    note.setVisible(!text.isEmpty());
    if (!text.isEmpty())
        announceNameChange(&note);
}

} // namespace

KeywordCoveragePanel::KeywordCoveragePanel(ASOStore &store, KeywordCoverage &coverage,
                                           const QString &country,
                                           const std::optional<QUuid> &appId, QWidget *parent)
    : QWidget(parent), m_coverage(coverage), m_tracking(store, country, appId),
      m_model(new KeywordCheckModel(this)), m_table(new KeywordCheckTable(*m_model)),
      m_track(
          new Button(Button::Kind::Primary, QStringLiteral("plus"), tr("Track selected keywords"))),
      m_progressText(new ElidedLabel(TextStyle::Secondary, TextLabel::Tone::Secondary)),
      m_progress(new ProgressLine), m_stop(new Button(Button::Kind::Link, QString())),
      m_progressRow(makeProgressRow()),
      m_failure(
          Banner::makeFailureCard(QStringLiteral("coverageFailure"), tr("Retry keyword data"))),
      m_empty(new EmptyState(QStringLiteral("coverageEmpty"))),
      m_status(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                             QStringLiteral("coverageStatus"))),
      m_outcome(makeParagraph(TextStyle::Secondary, TextLabel::Tone::Secondary, QString(),
                              QStringLiteral("coverageOutcome")))
{
    build();
    connect(&m_coverage, &KeywordCoverage::restarted, m_model, &KeywordCheckModel::clear);
    connect(&m_coverage, &KeywordCoverage::checked, m_model, &KeywordCheckModel::add);
    connect(&m_coverage, &KeywordCoverage::progressChanged, this,
            &KeywordCoveragePanel::showProgress);
    connect(&m_coverage, &KeywordCoverage::ownAppChanged, this,
            [this] { m_model->setChecks(m_coverage.checks()); });
    connect(m_failure, &Banner::actionTriggered, this, &KeywordCoveragePanel::retryRequested);
    connect(m_stop, &Button::clicked, &m_coverage, &KeywordCoverage::toggle);
    connect(m_model, &KeywordCheckModel::chosenChanged, this,
            &KeywordCoveragePanel::updateTrackButton);
    connect(m_track, &Button::clicked, this, [this] {
        m_tracking.track(m_model->chosen());
        updateTrackButton();
    });
    connect(&m_tracking, &CoverageTracking::trackedChanged, this, [this] {
        m_model->setTracked(m_tracking.tracked());
        m_table->setOwnRankShown(m_tracking.hasApp());
    });
    connect(&m_tracking, &CoverageTracking::outcomeChanged, this,
            &KeywordCoveragePanel::showOutcome);
    connect(&m_tracking, &CoverageTracking::promiseEnded, m_status, &QWidget::hide);
    m_model->setTracked(m_tracking.tracked());
    m_table->setOwnRankShown(m_tracking.hasApp());
    updateTrackButton();
    showProgress();
}

void KeywordCoveragePanel::setApp(const std::optional<QUuid> &appId)
{
    m_tracking.setApp(appId);
    updateTrackButton();
}

void KeywordCoveragePanel::build()
{
    setObjectName(QStringLiteral("coveragePanel"));
    nameControl(m_track, QStringLiteral("trackKeywords"), tr("Track selected keywords"));
    m_empty->setContent({QStringLiteral("key.fill"), tr("No keywords found"),
                         tr("This app has no keyword phrases in its public listing."), QString()});
    auto *head = makeRow(spacing::m);
    head->addWidget(makeHeading(tr("Keywords")), 1);
    head->addWidget(m_track);
    auto *layout = makeColumn(spacing::s, this);
    layout->addLayout(head);
    for (QWidget *part : std::initializer_list<QWidget *>{m_status, m_outcome, m_progressRow,
                                                          m_failure, m_table, m_empty})
        layout->addWidget(part);
    layout->addStretch(1);
    m_status->hide();
    m_outcome->hide();
}

QWidget *KeywordCoveragePanel::makeProgressRow()
{
    m_progressText->setObjectName(QStringLiteral("coverageProgress"));
    m_stop->setObjectName(QStringLiteral("coverageStop"));
    m_progress->setFixedWidth(m_progress->sizeHint().width() / 2);
    auto *row = new QWidget;
    auto *layout = makeRow(spacing::m, row);
    layout->addWidget(m_progressText, 1);
    layout->addWidget(m_progress);
    layout->addWidget(m_stop);
    return row;
}

void KeywordCoveragePanel::showProgress()
{
    using Phase = KeywordCoverage::Phase;
    const Phase phase = m_coverage.phase();
    const qsizetype total = m_coverage.total();
    const bool isStopped = phase == Phase::Stopped;
    m_progressRow->setVisible(phase == Phase::Checking || isStopped);
    m_progressText->setText(m_coverage.progressText());
    m_progressText->setAccessibleName(m_progressText->text());
    m_progress->setFraction(m_coverage.fraction());
    m_stop->setText(isStopped ? tr("Continue") : tr("Stop"));
    m_stop->setAccessibleName(isStopped ? tr("Continue checking keywords")
                                        : tr("Stop checking keywords"));
    m_failure->setMessage(m_coverage.error());
    m_empty->setVisible(phase == Phase::Finished && total == 0);
    m_table->setVisible(total > 0);
}

void KeywordCoveragePanel::updateTrackButton()
{
    const bool hasApp = m_tracking.hasApp();
    m_track->setEnabled(hasApp && !m_model->chosen().isEmpty());
    m_track->setToolTip(hasApp ? QString() : tr("Select an app first"));
}

void KeywordCoveragePanel::showOutcome()
{
    const CoverageTracking::Outcome &outcome = m_tracking.outcome();
    m_status->setTone(outcome.isProblem ? TextLabel::Tone::Red : TextLabel::Tone::Secondary);
    say(*m_status, outcome.message);
    say(*m_outcome, outcome.lines.join(u'\n'));
}

} // namespace veltrix
