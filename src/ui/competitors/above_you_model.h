// SPDX-License-Identifier: GPL-3.0-or-later
// The apps above the user's own as rows that change in place.
#pragma once

#include "ui/competitors/above_you_column.h"
#include "ui_kit/table/entry_model.h"

namespace veltrix
{

/// By rank until it is sorted otherwise.
class AboveYouModel final : public EntryModel<AboveEntry, AboveColumn>
{
    Q_OBJECT

public:
    explicit AboveYouModel(QObject *parent = nullptr);

    /// Shows these instead of those before: an app that stays changes in its row.
    void setApps(const std::vector<AppAbove> &apps, Date now);

protected:
    [[nodiscard]] bool comesFirstOfEquals(const AboveEntry &left,
                                          const AboveEntry &right) const override
    {
        return left.app.rank < right.app.rank;
    }
};

} // namespace veltrix
