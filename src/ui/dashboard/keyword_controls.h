// SPDX-License-Identifier: GPL-3.0-or-later
// The controls over the keyword table: search, storefront, refresh, add.
#pragma once

#include "ui/dashboard/quick_filter.h"

#include <QObject>

class QWidget;

namespace veltrix
{

class Button;
class KeywordFilter;
class PageToolbar;
class StorefrontPicker;
class TextField;

/// Stands at the end of a toolbar and sets a KeywordFilter, the search once typing rests.
class KeywordControls final : public QObject
{
    Q_OBJECT

public:
    /// Belongs to `toolbar`; `filter` outlives it.
    KeywordControls(PageToolbar &toolbar, KeywordFilter &filter);

    void focusSearch();
    /// Clears search and storefront filter, so that the quick filter alone counts.
    void showOnly(QuickFilter filter);
    void setRefreshEnabled(bool isEnabled);
    /// What asks for keywords opens at this button.
    [[nodiscard]] QWidget *addButton() const;

Q_SIGNALS:
    void refreshRequested();
    void addRequested();

private:
    void connectFilter();

    KeywordFilter &m_filter;
    TextField *m_search;
    StorefrontPicker *m_storefront;
    Button *m_refresh;
    Button *m_add;
};

} // namespace veltrix
