// SPDX-License-Identifier: GPL-3.0-or-later
// Choosing several storefronts: a list to check, with a field that filters it.
#pragma once

#include <QAbstractListModel>
#include <QStringList>
#include <QWidget>

class QListView;

namespace veltrix
{

class TextField;
class TextLabel;

/// The storefronts by their names in the user's language, each checked or not; filtered by name or
/// code. Those that were checked at first lead, the others follow in their fixed order.
class StorefrontCheckModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    static constexpr int codeRole = Qt::UserRole;

    explicit StorefrontCheckModel(QObject *parent = nullptr);

    /// Checks these and no others, and lets them lead. What is no storefront is passed over.
    void setChecked(const QStringList &codes);
    /// Upper-case codes, those that lead first.
    [[nodiscard]] const QStringList &checked() const { return m_checked; }
    void toggle(const QModelIndex &index);
    void setFilter(const QString &text);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

Q_SIGNALS:
    void checkedChanged();

private:
    void show();

    QString m_filter;
    QStringList m_order;
    QStringList m_shown;
    QStringList m_checked;
};

/// The list under its heading and how many are chosen. Arrows move in it, also from the field;
/// Space checks, and so does Enter in both.
class StorefrontChecklist final : public QWidget
{
    Q_OBJECT

public:
    /// The model outlives this.
    explicit StorefrontChecklist(StorefrontCheckModel &model, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void toggle(const QModelIndex &index);
    void showCount();
    [[nodiscard]] int heightOf(int rows) const;

    StorefrontCheckModel &m_model;
    TextLabel *m_count;
    TextField *m_filter;
    QListView *m_view;
};

} // namespace veltrix
