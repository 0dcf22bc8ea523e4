// SPDX-License-Identifier: GPL-3.0-or-later
// The search for any app at the top of the Competitors workspace.
#pragma once

#include "ui/competitors/competitor_search.h"

#include <QWidget>

namespace veltrix
{

class AppRowList;
class ArtworkImages;
class Banner;
class Button;
class EmptyState;
class TextField;
class TextLabel;

/// What the search has found; hidden while nothing is searched. Its search field stands apart, so
/// that a page can share out its height between what it shows.
class CompetitorSearchPanel final : public QWidget
{
    Q_OBJECT

public:
    CompetitorSearchPanel(CompetitorSearch &search, ArtworkImages &images,
                          QWidget *parent = nullptr);

    /// The search field with its button, to stand above the panel. Called once.
    [[nodiscard]] QLayout *makeEntry();
    /// The App Store id of the user's own app, which is marked.
    void setOwnApp(std::optional<std::int64_t> trackId);
    /// Puts the cursor into the search field.
    void focusField(Qt::FocusReason reason = Qt::OtherFocusReason);
    /// The same, and whatever is typed replaces the text.
    void focusWholeField();

Q_SIGNALS:
    void opened(const ITunesAppResult &app);

private:
    void build();
    void showState();

    CompetitorSearch &m_search;
    TextField *m_field;
    TextLabel *m_title;
    Button *m_showAll;
    EmptyState *m_message;
    Banner *m_failure;
    AppRowList *m_rows;
};

} // namespace veltrix
