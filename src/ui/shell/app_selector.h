// SPDX-License-Identifier: GPL-3.0-or-later
// Choosing the app whose keywords are shown: a button that folds out the list of apps.
#pragma once

#include "store/aso_store.h"

#include <QAbstractButton>
#include <QStyledItemDelegate>

class QListView;

namespace veltrix
{

class AppListModel;
class ArtworkImages;
class Button;
class TextField;
class TextLabel;

/// Icon at the leading end, two lines of text, a symbol at the trailing end.
struct AppLineGeometry {
    QRectF icon;
    QRectF name;
    QRectF country;
    QRectF mark;
};
AppLineGeometry layoutAppLine(const QRectF &rect, qreal nameHeight, qreal countryHeight,
                              qreal iconSize);

/// The header of the selector: the current app, and whether the list is folded out.
class AppSelectorButton final : public QAbstractButton
{
    Q_OBJECT

public:
    explicit AppSelectorButton(ArtworkImages &images, QWidget *parent = nullptr);

    void setApp(const std::optional<AppProfile> &app);
    /// Whether it is known that there is no app when there is none.
    void setLoaded(bool loaded);
    void setExpanded(bool expanded);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ArtworkImages &m_images;
    std::optional<AppProfile> m_app;
    bool m_loaded = true;
    bool m_expanded = false;
};

class AppListDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit AppListDelegate(ArtworkImages &images, QObject *parent = nullptr);
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override;

private:
    ArtworkImages &m_images;
};

/// Header and list.
class AppSelector final : public QWidget
{
    Q_OBJECT

public:
    AppSelector(ASOStore &store, ArtworkImages &images, QWidget *parent = nullptr);

    void setApp(const std::optional<AppProfile> &app);
    void setExpanded(bool expanded);
    [[nodiscard]] bool isExpanded() const { return m_expanded; }

Q_SIGNALS:
    void appChosen(QUuid id);
    void addAppRequested();
    void deleteAppRequested(QUuid id);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void updateList();
    void showMenu(const QPoint &position);
    void chooseCurrent(const QModelIndex &index);

    AppListModel *m_model;
    AppSelectorButton *m_header;
    QWidget *m_card;
    TextField *m_search;
    /// The field and the room around it, which goes when there is nothing to search.
    QWidget *m_searchRow;
    QListView *m_list;
    TextLabel *m_noMatch;
    Button *m_add;
    bool m_expanded = false;
};

} // namespace veltrix
