// SPDX-License-Identifier: GPL-3.0-or-later
// Choosing a storefront: a button that opens a list which can be filtered by typing.
#pragma once

#include "ui_kit/widgets/button.h"

#include <QAbstractListModel>

#include <optional>

namespace veltrix
{

/// Whether what was typed into a filter finds the storefront: part of its name in the user's
/// language, or its code.
[[nodiscard]] bool isStorefrontFound(const QString &code, const QString &typed);

/// The storefronts by their names in the user's language, in their fixed order; optionally
/// "All Countries" first. Filtered by name or code.
class StorefrontListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Offer { Storefronts, AllAndStorefronts };
    static constexpr int codeRole = Qt::UserRole;

    explicit StorefrontListModel(Offer offer, QObject *parent = nullptr);

    void setFilter(const QString &text);
    /// The row of a code; no value means "All Countries". -1 when it is not listed.
    [[nodiscard]] int rowOf(const std::optional<QString> &code) const;
    [[nodiscard]] std::optional<QString> codeAt(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    Offer m_offer;
    /// An empty code stands for "All Countries".
    QStringList m_codes;
};

/// A button that shows the chosen storefront and opens the list.
class StorefrontPicker final : public Button
{
    Q_OBJECT

public:
    using Offer = StorefrontListModel::Offer;

    /// `purpose` starts the accessible name: "Storefront filter" reads as
    /// "Storefront filter: All Countries".
    StorefrontPicker(const QString &objectName, const QString &purpose, Offer offer,
                     QWidget *parent = nullptr);

    /// No value means "All Countries".
    void setCode(const std::optional<QString> &code);
    [[nodiscard]] const std::optional<QString> &code() const { return m_code; }
    /// Text before the storefront's name on the button, empty unless set.
    void setPrefix(const QString &prefix);

    void openList();

    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user chose another storefront.
    void picked(const std::optional<QString> &code);

private:
    void updateText();

    QString m_purpose;
    QString m_prefix;
    Offer m_offer;
    std::optional<QString> m_code;
};

} // namespace veltrix
