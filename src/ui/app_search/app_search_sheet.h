// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet in which the user finds an app to track.
#pragma once

#include <QWidget>

class QScrollArea;

namespace veltrix
{

class AppRow;
class AppRowList;
class AppSearch;
class ArtworkImages;
class ASOStore;
class Button;
class ElidedLabel;
class LoadableView;
class StorefrontPicker;
class TextField;
class TextLabel;
struct AppProfile;

/// Header, search field, below them what the search says, and what was added last. It stays open
/// for further apps.
class AppSearchSheet final : public QWidget
{
    Q_OBJECT

public:
    /// `country` is the storefront that is searched at first.
    AppSearchSheet(ASOStore &store, ArtworkImages &images, const QString &country,
                   QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void appTracked(const AppProfile &app);
    void closeRequested();
    /// The user chose another storefront for app searches.
    void storefrontChanged(const QString &country);

private:
    void build();
    [[nodiscard]] QWidget *makeResults();
    [[nodiscard]] QWidget *makeAdded();
    void submit();
    void showState();
    void showAdded(const AppProfile &app);
    void addTrackButton(AppRow &row);

    AppSearch *m_search;
    TextField *m_field;
    Button *m_submit;
    StorefrontPicker *m_storefront;
    LoadableView *m_view;
    TextLabel *m_count;
    AppRowList *m_rows;
    QScrollArea *m_scroll;
    QWidget *m_results;
    QWidget *m_added;
    ElidedLabel *m_addedName;
};

} // namespace veltrix
