// SPDX-License-Identifier: GPL-3.0-or-later
// The research page of one app: figures, screenshots, similar apps, keyword coverage.
#pragma once

#include "effects/task_scope.h"
#include "model/itunes_app_result.h"
#include "ui/listing/research_context.h"

#include <QUuid>
#include <QWidget>

class QBoxLayout;
class QScrollArea;
class QStackedWidget;

namespace veltrix
{

class EmptyState;
class FigureTile;
class KeywordCoverage;
class LoadFailure;
class SimilarApps;

/// Loads the app, then checks its keywords and finds similar apps. Leaving the page, which deletes
/// it, stops both.
class CompetitorResearchDetail final : public QWidget
{
    Q_OBJECT

public:
    struct Selection {
        std::int64_t trackId = 0;
        QString country;
        /// The user's app, if one is selected.
        std::optional<QUuid> appId;
        /// What the app was called where it was chosen; may be empty.
        QString name;
    };

    CompetitorResearchDetail(const ResearchContext &context, const Selection &selection,
                             QWidget *parent = nullptr);
    ~CompetitorResearchDetail() override;

    [[nodiscard]] const Selection &selection() const { return m_selection; }

Q_SIGNALS:
    void backRequested();
    /// Another app is to be researched.
    void opened(std::int64_t trackId, const QString &name);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void load();
    Task<void> loadApp(std::stop_token stop);
    void showApp(const ITunesAppResult &app);
    [[nodiscard]] QWidget *makeHeader(const ITunesAppResult &app);
    [[nodiscard]] QWidget *makeFigures(const ITunesAppResult &app);
    [[nodiscard]] QWidget *makeListing(const ITunesAppResult &app);
    void startChecks(const ITunesAppResult &app);
    void updateCoverageFigure();
    void arrangeColumns();

    ResearchContext m_context;
    Selection m_selection;
    KeywordCoverage *m_coverage;
    SimilarApps *m_similar;
    QStackedWidget *m_stack;
    EmptyState *m_loading;
    LoadFailure *m_failure;
    QScrollArea *m_page = nullptr;
    QBoxLayout *m_columns = nullptr;
    FigureTile *m_coverageFigure = nullptr;
    /// Counts the loadings that were asked for.
    int m_loadAttempt = 0;
    TaskScope m_tasks;
};

} // namespace veltrix
