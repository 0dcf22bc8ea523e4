// SPDX-License-Identifier: GPL-3.0-or-later
// The table of the apps above the user's own.
#pragma once

#include "ui/competitors/above_you_model.h"
#include "ui_kit/table/openable_table.h"

namespace veltrix
{

class AboveYouTable final : public OpenableTable
{
    Q_OBJECT

public:
    AboveYouTable(AboveYouModel &model, ArtworkImages &images, QWidget *parent = nullptr);

    /// The app of the current row, or null.
    [[nodiscard]] const AppAbove *current() const;

Q_SIGNALS:
    void currentAppChanged();

protected:
    void fitColumns() override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    AboveYouModel &m_model;
};

} // namespace veltrix
