// SPDX-License-Identifier: GPL-3.0-or-later
// The phrases of a researched app's listing, as they are checked, and the button to track them.
#pragma once

#include "ui/competitors/keyword_coverage.h"

#include <QUuid>
#include <QWidget>

namespace veltrix
{

class Button;
class ElidedLabel;
class EmptyState;
class FailureCard;
class KeywordCheckModel;
class KeywordCheckTable;
class ProgressLine;
class TextLabel;
struct AdmissionStatus;

class KeywordCoveragePanel final : public QWidget
{
    Q_OBJECT

public:
    /// Follows `coverage`, which it does not start.
    KeywordCoveragePanel(ASOStore &store, KeywordCoverage &coverage, const QString &country,
                         const std::optional<QUuid> &appId, QWidget *parent = nullptr);

private:
    void build();
    void showProgress();
    void updateTracked();
    void updateTrackButton();
    void trackChosen();
    /// What became of the chosen keywords: a message, and more lines below it.
    void showOutcome(const AdmissionStatus &status, QStringList lines);

    ASOStore &m_store;
    KeywordCoverage &m_coverage;
    QString m_country;
    std::optional<QUuid> m_appId;
    KeywordCheckModel *m_model;
    KeywordCheckTable *m_table;
    Button *m_track;
    QWidget *m_progressRow;
    ElidedLabel *m_progressText;
    ProgressLine *m_progress;
    Button *m_stop;
    FailureCard *m_failure;
    EmptyState *m_empty;
    TextLabel *m_status;
    /// The count and what was refused.
    TextLabel *m_outcome;
};

} // namespace veltrix
