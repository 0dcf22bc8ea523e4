// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet with everything the App Store says about one app.
#pragma once

#include "effects/task_scope.h"
#include "ui/listing/ranked_app_research_row.h"
#include "ui_kit/widgets/sheet_frame.h"

class QStackedWidget;

namespace veltrix
{

class EmptyState;

class AppDetailsSheet final : public SheetFrame
{
    Q_OBJECT

public:
    AppDetailsSheet(const ResearchContext &context, const AppDetailSelection &selection,
                    QWidget *parent = nullptr);
    ~AppDetailsSheet() override;

private:
    void load();
    Task<void> loadDetails(std::stop_token stop);
    void showResult(const ITunesAppResult &result);
    void addActions(const ITunesAppResult &result);
    [[nodiscard]] QWidget *makeFacts(const ITunesAppResult &result);

    ResearchContext m_context;
    AppDetailSelection m_selection;
    QStackedWidget *m_stack;
    EmptyState *m_message;
    QWidget *m_page = nullptr;
    /// Counts the loadings that were asked for.
    int m_attempt = 0;
    TaskScope m_tasks;
};

} // namespace veltrix
