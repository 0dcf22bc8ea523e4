// SPDX-License-Identifier: GPL-3.0-or-later
// Where the program learns whether the desktop is light or dark.
#pragma once

#include "ui_kit/theme/tokens.h"

#include <QObject>

namespace veltrix
{

class ColorSchemeSource : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    [[nodiscard]] virtual ColorScheme colorScheme() const = 0;

Q_SIGNALS:
    void colorSchemeChanged();
};

} // namespace veltrix
