// SPDX-License-Identifier: GPL-3.0-or-later
// The table of movers: a click selects, a double click or Enter opens the history.
#pragma once

#include "ui/overview/movers_model.h"
#include "ui_kit/table/openable_table.h"

namespace veltrix
{

class MoversTable final : public OpenableTable
{
    Q_OBJECT

public:
    MoversTable(MoversModel &model, ArtworkImages &images, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The history of the keyword is wanted.
    void opened(QUuid keywordId);

protected:
    void fitColumns() override;

private:
    MoversModel &m_model;
};

} // namespace veltrix
