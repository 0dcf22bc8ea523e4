// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet in which the user finds an app to track.
#pragma once

#include <QWidget>

class QScrollArea;
class QStackedWidget;
class QVBoxLayout;

namespace veltrix
{

class AppSearch;
class AppSearchRowView;
class ArtworkImages;
class ASOStore;
class Button;
class EmptyState;
class StorefrontPicker;
class TextField;
class TextLabel;
struct AppProfile;

class AppSearchSheet final : public QWidget
{
    Q_OBJECT

public:
    /// `country` is the storefront that is searched at first.
    AppSearchSheet(ASOStore &store, ArtworkImages &images, const QString &country,
                   QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    /// For tests and pictures: the search behind the sheet.
    [[nodiscard]] AppSearch &search() { return *m_search; }

Q_SIGNALS:
    void appTracked(const AppProfile &app);
    void closeRequested();
    /// The user chose another storefront for app searches.
    void storefrontChanged(const QString &country);

private:
    void submit();
    void showState();
    void showMessage(const QString &symbol, const QString &title, const QString &text,
                     const QString &action = QString());
    void showResults();

    AppSearch *m_search;
    ArtworkImages &m_images;
    TextField *m_field;
    Button *m_submit;
    StorefrontPicker *m_storefront;
    QStackedWidget *m_stack;
    EmptyState *m_message;
    QWidget *m_results;
    TextLabel *m_count;
    QVBoxLayout *m_rows;
    QScrollArea *m_scroll;
};

} // namespace veltrix
