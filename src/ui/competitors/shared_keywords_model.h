// SPDX-License-Identifier: GPL-3.0-or-later
// Shared keywords as rows that change in place.
#pragma once

#include "ui/competitors/shared_keyword_column.h"
#include "ui_kit/table/entry_model.h"

#include <QHash>

namespace veltrix
{

/// By keyword until it is sorted otherwise; the first rows alone until all are wanted.
class SharedKeywordsModel final : public EntryModel<SharedEntry, SharedColumn>
{
    Q_OBJECT

public:
    /// Rows shown at first.
    static constexpr int firstRows = 25;

    explicit SharedKeywordsModel(QObject *parent = nullptr);

    /// Shows these instead of those before: what stays changes in its row.
    void setKeywords(const std::vector<SharedKeyword> &keywords, const RivalIcons &icons);
    void showAll();
    /// Rows that showAll() would add.
    [[nodiscard]] int hiddenCount() const { return entryCount() - rowCount(); }

protected:
    [[nodiscard]] std::optional<size_t> mostShown() const override;
    [[nodiscard]] bool comesFirstOfEquals(const SharedEntry &left,
                                          const SharedEntry &right) const override;

private:
    bool m_showsAll = false;
    QHash<QUuid, Kept *> m_byId;
};

} // namespace veltrix
