// SPDX-License-Identifier: GPL-3.0-or-later
// The list of tracked apps in the sidebar.
#pragma once

#include <QListView>
#include <QStyledItemDelegate>
#include <QUuid>

namespace veltrix
{

class AppListModel;
class ArtworkImages;

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

/// As high as its apps, or as the room there is for them.
class AppListView final : public QListView
{
    Q_OBJECT

public:
    AppListView(AppListModel &model, ArtworkImages &images, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    /// Brings the selected app into view and makes it the current one.
    void showSelected();

Q_SIGNALS:
    /// Clicked, or Enter or Space was pressed on it.
    void appChosen(QUuid id);
    void deleteRequested(QUuid id);
    /// Up was pressed on the first app, or Escape.
    void leftByKey();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] int heightOfRows(int count) const;
    void followCount();
    void showMenu(const QPoint &position);

    AppListModel &m_model;
};

} // namespace veltrix
