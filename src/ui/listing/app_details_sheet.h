// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet with everything the App Store says about one app.
#pragma once

#include "model/itunes_app_result.h"
#include "ui/listing/research_context.h"
#include "ui_kit/loading/loader.h"
#include "ui_kit/widgets/sheet_frame.h"

#include <QUuid>

namespace veltrix
{

class LoadableView;

/// Identifies the app whose details are open.
struct AppDetailSelection {
    std::int64_t trackId = 0;
    QString country;
    /// The user's app, if one is selected.
    std::optional<QUuid> appId;

    bool operator==(const AppDetailSelection &) const = default;
};

/// Loads the app and shows its listing, with the way to its page and to track it.
class AppDetailsSheet final : public SheetFrame
{
    Q_OBJECT

public:
    AppDetailsSheet(const ResearchContext &context, const AppDetailSelection &selection,
                    QWidget *parent = nullptr);

private:
    void showState();
    [[nodiscard]] QWidget *makePage(const ITunesAppResult &result);
    void addActions(const ITunesAppResult &result);
    [[nodiscard]] QWidget *makeFacts(const ITunesAppResult &result);

    ResearchContext m_context;
    AppDetailSelection m_selection;
    LoadableView *m_view;
    Loader<ITunesAppResult> m_details;
};

} // namespace veltrix
