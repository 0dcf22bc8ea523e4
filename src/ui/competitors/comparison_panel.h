// SPDX-License-Identifier: GPL-3.0-or-later
// Where a tracked competitor stands beside the user's app, and what it changed.
#pragma once

#include "ui/competitors/competitor_comparison.h"

#include <QWidget>

class QBoxLayout;

namespace veltrix
{

class ArtworkImages;
class Banner;
class Button;
class ChangeLogView;
class SharedKeywordsModel;
class SharedKeywordsTable;
class TextLabel;

/// Shared keywords with the change log beside or below them; hidden while the app is not tracked.
/// What is not looked at asks for nothing.
class ComparisonPanel final : public QWidget
{
    Q_OBJECT

public:
    /// `app` is what is researched, which has an id.
    ComparisonPanel(ASOStore &store, ArtworkImages &images, const ITunesAppResult &app,
                    const std::optional<QUuid> &appId, QWidget *parent = nullptr);

    /// Another app of the user's.
    void setApp(const std::optional<QUuid> &appId) { m_comparison.setApp(appId); }
    enum class Log { Beside, Below };
    void placeLog(Log place);

Q_SIGNALS:
    /// The ranking history of the keyword is wanted, with the line of that competitor.
    void historyRequested(const DashboardKeywordRow &keyword, QUuid competitorId);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void build();
    void showTracked();
    void showShared();
    void showLog();
    /// The history of the selected row, else of the first.
    void compareOverTime();
    void open(int row);

    ASOStore &m_store;
    ITunesAppResult m_app;
    CompetitorComparison m_comparison;
    TextLabel *m_lead;
    TextLabel *m_heading;
    Button *m_compare;
    Banner *m_failure;
    TextLabel *m_message;
    TextLabel *m_older;
    SharedKeywordsModel *m_model;
    SharedKeywordsTable *m_table;
    Button *m_more;
    ChangeLogView *m_log;
    QBoxLayout *m_columns;
    Log m_place = Log::Below;
};

} // namespace veltrix
