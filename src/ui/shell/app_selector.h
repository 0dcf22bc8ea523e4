// SPDX-License-Identifier: GPL-3.0-or-later
// Choosing the app whose keywords are shown: a button that folds out the list of apps.
#pragma once

#include "store/aso_store.h"
#include "ui/shell/app_line.h"

#include <QAbstractButton>
#include <QKeySequence>

namespace veltrix
{

class AppListModel;
class AppListView;
class ArtworkImages;
class Button;
class TextField;
class TextLabel;

/// The header of the selector: the current app, and whether the list is folded out.
class AppSelectorButton final : public QAbstractButton
{
    Q_OBJECT

public:
    explicit AppSelectorButton(ArtworkImages &images, QWidget *parent = nullptr);

    void setApp(const std::optional<AppProfile> &app);
    /// A second line of the tool tip.
    void setHint(const QString &hint);
    /// Whether it is known that there is no app when there is none.
    void setLoaded(bool loaded);
    void setExpanded(bool expanded);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    ArtworkImages &m_images;
    std::optional<AppProfile> m_app;
    QString m_hint;
    bool m_loaded = true;
    bool m_expanded = false;
};

/// Header and list, with a field that finds apps in it.
class AppSelector final : public QWidget
{
    Q_OBJECT

public:
    AppSelector(ASOStore &store, ArtworkImages &images, QWidget *parent = nullptr);

    /// The keys of the window that do what this does.
    struct Keys {
        QKeySequence add;
        QKeySequence next;
        QKeySequence previous;
    };
    /// Tells of them in tool tips.
    void setKeys(const Keys &keys);
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
    void choose(QUuid id);
    /// The first of the apps that were found.
    void chooseFound();

    AppListModel *m_model;
    AppSelectorButton *m_header;
    QWidget *m_card;
    TextField *m_search;
    /// The field and the room around it, which goes when there is nothing to search.
    QWidget *m_searchRow;
    AppListView *m_list;
    TextLabel *m_noMatch;
    Button *m_add;
    bool m_expanded = false;
};

} // namespace veltrix
