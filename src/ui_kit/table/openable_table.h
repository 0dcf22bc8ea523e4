// SPDX-License-Identifier: GPL-3.0-or-later
// A tall table whose rows open something: a click selects, a double click or Enter opens.
#pragma once

#include "ui_kit/table/tall_table.h"

namespace veltrix
{

class OpenableTable : public TallTable
{
    Q_OBJECT

public:
    using TallTable::TallTable;

Q_SIGNALS:
    void rowOpened(int row);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
};

} // namespace veltrix
