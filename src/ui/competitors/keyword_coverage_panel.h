// SPDX-License-Identifier: GPL-3.0-or-later
// The phrases of a researched app's listing, as they are checked, and the button to track them.
#pragma once

#include "ui/competitors/coverage_tracking.h"
#include "ui/competitors/keyword_coverage.h"

#include <QWidget>

namespace veltrix
{

class Banner;
class Button;
class ElidedLabel;
class EmptyState;
class KeywordCheckModel;
class KeywordCheckTable;
class ProgressLine;
class TextLabel;

/// The table of checks between what is done with it and how far it is.
class KeywordCoveragePanel final : public QWidget
{
    Q_OBJECT

public:
    /// Follows `coverage`, which it does not start; keywords are tracked in that storefront for the
    /// user's app.
    KeywordCoveragePanel(ASOStore &store, KeywordCoverage &coverage, const QString &country,
                         const std::optional<QUuid> &appId, QWidget *parent = nullptr);

    /// Another app of the user's.
    void setApp(const std::optional<QUuid> &appId);

Q_SIGNALS:
    /// The checks are to go on after a failure.
    void retryRequested();

private:
    void build();
    [[nodiscard]] QWidget *makeProgressRow();
    void showProgress();
    void updateTrackButton();
    void showOutcome();

    KeywordCoverage &m_coverage;
    CoverageTracking m_tracking;
    KeywordCheckModel *m_model;
    KeywordCheckTable *m_table;
    Button *m_track;
    ElidedLabel *m_progressText;
    ProgressLine *m_progress;
    Button *m_stop;
    QWidget *m_progressRow;
    Banner *m_failure;
    EmptyState *m_empty;
    TextLabel *m_status;
    /// The count and what was refused.
    TextLabel *m_outcome;
};

} // namespace veltrix
