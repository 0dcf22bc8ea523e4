// SPDX-License-Identifier: GPL-3.0-or-later
// What the App Store suggests to whoever types a keyword.
#pragma once

#include "effects/autocomplete_suggesting.h"
#include "model/dashboard_keyword_row.h"
#include "ui/suggestions/keyword_tracking.h"
#include "ui_kit/loading/loader.h"
#include "ui_kit/widgets/sheet_frame.h"

#include <memory>

namespace veltrix
{

class LoadableView;
class SuggestionRows;
class TextLabel;

/// The suggestions that begin with a tracked keyword, in its storefront, each to be tracked for the
/// same app.
class KeywordSuggestionsSheet final : public SheetFrame
{
    Q_OBJECT

public:
    /// Suggestions that are shown at most.
    static constexpr qsizetype mostShown = 10;

    /// `appId` is the app that has the keyword.
    KeywordSuggestionsSheet(ASOStore &store, std::shared_ptr<AutocompleteSuggesting> source,
                            const DashboardKeywordRow &keyword, QUuid appId,
                            QWidget *parent = nullptr);

private:
    [[nodiscard]] QWidget *makeList();
    void showState();
    void showOutcome();

    DashboardKeywordRow m_keyword;
    KeywordTracking m_tracking;
    LoadableView *m_view;
    TextLabel *m_outcome;
    SuggestionRows *m_rows;
    QWidget *m_list;
    Loader<QStringList> m_terms;
};

} // namespace veltrix
