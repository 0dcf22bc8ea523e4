// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet that explains a keyword's latest saved measurement, model by model.
#pragma once

#include "effects/autocomplete_suggesting.h"
#include "store/aso_store.h"
#include "ui/analysis/analysis_content.h"
#include "ui_kit/widgets/sheet_frame.h"

#include <memory>

class QVBoxLayout;

namespace veltrix
{

class FeedbackButton;

/// The analysis of one snapshot as cards. Reads nothing but the value it is given.
class KeywordAnalysisContent final : public QWidget
{
    Q_OBJECT

public:
    explicit KeywordAnalysisContent(const AnalysisContent &content, QWidget *parent = nullptr);

private:
    void buildEmpty(const AnalysisContent &content);
    void buildGuidance(const AnalysisContent &content);
    void buildFigures(const AnalysisContent &content);
    void buildCard(const AnalysisCard &card);

    QVBoxLayout *m_layout;
};

/// Shows saved data only and never starts a request; the suggestions that go on from the keyword
/// are a sheet of their own, for whoever asks for them. Follows the keyword: a measurement that
/// arrives while the sheet is open is shown at once, at the same place in the scrolled text.
class KeywordAnalysisSheet final : public SheetFrame
{
    Q_OBJECT

public:
    /// Without `suggestions` nothing is suggested.
    KeywordAnalysisSheet(ASOStore &store, const DashboardKeywordRow &keyword,
                         std::shared_ptr<AutocompleteSuggesting> suggestions = {},
                         QWidget *parent = nullptr);

private:
    void showNewestSnapshot();
    void addSuggestionsButton();
    void copyText();

    ASOStore &m_store;
    DashboardKeywordRow m_keyword;
    std::shared_ptr<AutocompleteSuggesting> m_suggestions;
    AnalysisContent m_shown;
    KeywordAnalysisContent *m_content = nullptr;
    FeedbackButton *m_copy;
};

} // namespace veltrix
