// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/stored_preferences.h"

#include "effects/settings_file.h"
#include "support/json_printers.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class PreferencesTest : public testing::Test
{
protected:
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("veltrix.conf"));
};

TEST_F(PreferencesTest, StartWithTheUnitedStatesAndNothingElse)
{
    SettingsFile settings(path, std::make_shared<FileThread>());
    const StoredPreferences preferences(settings);
    EXPECT_EQ(preferences.preferredStorefrontCountry(), QStringLiteral("US"));
    EXPECT_TRUE(preferences.keywordTableColumns().isEmpty());
    EXPECT_TRUE(preferences.windowGeometry().isEmpty());
}

TEST_F(PreferencesTest, ComeBackAtTheNextStartUnderTheirNames)
{
    {
        SettingsFile settings(path, std::make_shared<FileThread>());
        StoredPreferences preferences(settings);
        preferences.setPreferredStorefrontCountry(QStringLiteral("JP"));
        preferences.setKeywordTableColumns(QStringLiteral("keyword 200 shown; sort x ascending"));
        preferences.setWindowGeometry("\x01\x02");
    }
    SettingsFile settings(path, std::make_shared<FileThread>());
    const StoredPreferences preferences(settings);
    EXPECT_EQ(preferences.preferredStorefrontCountry(), QStringLiteral("JP"));
    EXPECT_EQ(preferences.keywordTableColumns(),
              QStringLiteral("keyword 200 shown; sort x ascending"));
    EXPECT_EQ(preferences.windowGeometry(), QByteArray("\x01\x02"));
    EXPECT_TRUE(settings.contains(QStringLiteral("preferredStorefrontCountry")));
    EXPECT_TRUE(settings.contains(QStringLiteral("keywordTableColumns")));
}

TEST_F(PreferencesTest, AStorefrontThatDoesNotExistIsTheUnitedStates)
{
    SettingsFile settings(path, std::make_shared<FileThread>());
    settings.setValue(QStringLiteral("preferredStorefrontCountry"), QStringLiteral("Moon"));
    EXPECT_EQ(StoredPreferences(settings).preferredStorefrontCountry(), QStringLiteral("US"));
    settings.setValue(QStringLiteral("preferredStorefrontCountry"), QStringLiteral("de"));
    EXPECT_EQ(StoredPreferences(settings).preferredStorefrontCountry(), QStringLiteral("DE"));
}

TEST_F(PreferencesTest, TheThemeIsTheDesktopsUntilOneIsChosenAndComesBack)
{
    SettingsFile settings(path, std::make_shared<FileThread>());
    StoredPreferences preferences(settings);
    EXPECT_EQ(preferences.theme(), ThemeChoice::System);
    for (const ThemeChoice choice : {ThemeChoice::Dark, ThemeChoice::Light, ThemeChoice::System}) {
        preferences.setTheme(choice);
        EXPECT_EQ(StoredPreferences(settings).theme(), choice);
    }
    settings.setValue(QStringLiteral("theme"), QStringLiteral("sepia"));
    EXPECT_EQ(preferences.theme(), ThemeChoice::System) << "a file edited by hand";
}

TEST_F(PreferencesTest, RememberWhatIsTold)
{
    SettingsFile settings(path, std::make_shared<FileThread>());
    StoredPreferences preferences(settings);
    EXPECT_EQ(preferences.digestChoice(), DigestChoice());
    const DigestChoice chosen{false, 10, true, false, false};
    preferences.setDigestChoice(chosen);
    EXPECT_EQ(StoredPreferences(settings).digestChoice(), chosen);
    settings.setValue(QStringLiteral("tell/leastPlaces"), QStringLiteral("many"));
    EXPECT_EQ(preferences.digestChoice().leastPlaces, 1) << "a file edited by hand";
}

} // namespace
} // namespace veltrix
