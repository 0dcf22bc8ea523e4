// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/stored_preferences.h"

#include "effects/settings_file.h"
#include "model/storefront_codes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veltrix
{

namespace
{

const QString storefrontKey = QStringLiteral("preferredStorefrontCountry");
const QString columnsKey = QStringLiteral("keywordTableColumns");
const QString geometryKey = QStringLiteral("windowGeometry");
const QString themeKey = QStringLiteral("theme");
const QString tellsMovementsKey = QStringLiteral("tell/movements");
const QString leastPlacesKey = QStringLiteral("tell/leastPlaces");
const QString tellsTopTenKey = QStringLiteral("tell/topTen");
const QString tellsResultsKey = QStringLiteral("tell/results");
const QString tellsBestsKey = QStringLiteral("tell/bests");

const std::array<std::pair<ThemeChoice, QString>, 3> themeNames{
    {{ThemeChoice::System, QStringLiteral("system")},
     {ThemeChoice::Light, QStringLiteral("light")},
     {ThemeChoice::Dark, QStringLiteral("dark")}}};

} // namespace

QString StoredPreferences::preferredStorefrontCountry() const
{
    const QString code = m_settings.value(storefrontKey, QStringLiteral("US")).toString().toUpper();
    // A file edited by hand may hold anything.
    return storefrontCodes().contains(code) ? code : QStringLiteral("US");
}

void StoredPreferences::setPreferredStorefrontCountry(const QString &code)
{
    m_settings.setValue(storefrontKey, code);
}

QString StoredPreferences::keywordTableColumns() const
{
    return m_settings.value(columnsKey).toString();
}

void StoredPreferences::setKeywordTableColumns(const QString &columns)
{
    m_settings.setValue(columnsKey, columns);
}

QByteArray StoredPreferences::windowGeometry() const
{
    return m_settings.value(geometryKey).toByteArray();
}

void StoredPreferences::setWindowGeometry(const QByteArray &geometry)
{
    m_settings.setValue(geometryKey, geometry);
}

ThemeChoice StoredPreferences::theme() const
{
    const QString stored = m_settings.value(themeKey).toString();
    for (const auto &[choice, name] : themeNames) {
        if (name == stored)
            return choice;
    }
    return ThemeChoice::System;
}

void StoredPreferences::setTheme(ThemeChoice theme)
{
    for (const auto &[choice, name] : themeNames) {
        if (choice == theme)
            m_settings.setValue(themeKey, name);
    }
}

DigestChoice StoredPreferences::digestChoice() const
{
    DigestChoice choice;
    choice.movements = m_settings.value(tellsMovementsKey, choice.movements).toBool();
    choice.leastPlaces = std::max(1, m_settings.value(leastPlacesKey, choice.leastPlaces).toInt());
    choice.topTen = m_settings.value(tellsTopTenKey, choice.topTen).toBool();
    choice.results = m_settings.value(tellsResultsKey, choice.results).toBool();
    choice.bests = m_settings.value(tellsBestsKey, choice.bests).toBool();
    return choice;
}

void StoredPreferences::setDigestChoice(const DigestChoice &choice)
{
    m_settings.setValue(tellsMovementsKey, choice.movements);
    m_settings.setValue(leastPlacesKey, choice.leastPlaces);
    m_settings.setValue(tellsTopTenKey, choice.topTen);
    m_settings.setValue(tellsResultsKey, choice.results);
    m_settings.setValue(tellsBestsKey, choice.bests);
}

} // namespace veltrix
