// SPDX-License-Identifier: GPL-3.0-or-later
// The table of keywords where both rank.
#pragma once

#include "ui/competitors/shared_keywords_model.h"
#include "ui_kit/table/openable_table.h"

namespace veltrix
{

class SharedKeywordsTable final : public OpenableTable
{
    Q_OBJECT

public:
    SharedKeywordsTable(SharedKeywordsModel &model, ArtworkImages &images,
                        QWidget *parent = nullptr);

protected:
    void fitColumns() override;

private:
    SharedKeywordsModel &m_model;
};

} // namespace veltrix
