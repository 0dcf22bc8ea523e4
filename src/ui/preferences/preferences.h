// SPDX-License-Identifier: GPL-3.0-or-later
// What the program remembers about the user's choices.
#pragma once

#include "model/digest_choice.h"
#include "ui_kit/theme/theme_choice.h"

#include <QByteArray>
#include <QString>

namespace veltrix
{

class Preferences
{
public:
    Preferences() = default;
    virtual ~Preferences() = default;
    Preferences(const Preferences &) = delete;
    Preferences &operator=(const Preferences &) = delete;

    /// Storefront of app searches, "US" until the user chooses another.
    [[nodiscard]] virtual QString preferredStorefrontCountry() const = 0;
    virtual void setPreferredStorefrontCountry(const QString &code) = 0;

    /// Order, width and visibility of the keyword table's columns, as ColumnLayout writes them;
    /// empty at first.
    [[nodiscard]] virtual QString keywordTableColumns() const = 0;
    virtual void setKeywordTableColumns(const QString &columns) = 0;

    /// Place and size of the main window, as QWidget saves them; empty at first.
    [[nodiscard]] virtual QByteArray windowGeometry() const = 0;
    virtual void setWindowGeometry(const QByteArray &geometry) = 0;

    /// ThemeChoice::System until the user chooses another.
    [[nodiscard]] virtual ThemeChoice theme() const = 0;
    virtual void setTheme(ThemeChoice theme) = 0;

    /// What a notification tells after a daily run.
    [[nodiscard]] virtual DigestChoice digestChoice() const = 0;
    virtual void setDigestChoice(const DigestChoice &choice) = 0;
};

} // namespace veltrix
