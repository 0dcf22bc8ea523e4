// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet with the apps above the user's own for a keyword.
#pragma once

#include "ui/competitors/above_you_loading.h"
#include "ui/listing/research_context.h"
#include "ui_kit/widgets/sheet_frame.h"

namespace veltrix
{

class AboveYouModel;
class AboveYouTable;
class Button;
class LoadableView;
class TextLabel;

/// Who is above, since when, and what became of it in a week. A row opens the app's details over
/// the sheet; below the table the chosen app is tracked as a competitor.
class AboveYouSheet final : public SheetFrame
{
    Q_OBJECT

public:
    AboveYouSheet(const ResearchContext &context, const DashboardKeywordRow &keyword,
                  QWidget *parent = nullptr);

private:
    [[nodiscard]] QWidget *makePage();
    void addFooter();
    void showState();
    void showTracking();
    [[nodiscard]] bool canTrack() const;
    void trackCurrent();
    void openDetails();

    ResearchContext m_context;
    DashboardKeywordRow m_keyword;
    AboveYouLoading m_loading;
    LoadableView *m_view;
    QWidget *m_page = nullptr;
    TextLabel *m_problem;
    TextLabel *m_empty;
    TextLabel *m_note;
    AboveYouModel *m_model;
    AboveYouTable *m_table;
    TextLabel *m_tracking;
    Button *m_details;
    Button *m_track;
};

} // namespace veltrix
