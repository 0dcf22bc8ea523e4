// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/supabase_configuration.h"

#include "clients/property_list.h"
#include "support/json_printers.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

QByteArray plist(const char *url, const char *key)
{
    return QByteArray("<plist version=\"1.0\"><dict><key>projectURL</key><string>") + url +
           "</string><key>publishableKey</key><string>" + key + "</string></dict></plist>";
}

QString problem(const char *url, const char *key = "sb_publishable_x")
{
    try {
        SupabaseConfiguration::fromPropertyList(plist(url, key));
        return QStringLiteral("fine");
    } catch (const ConfigurationError &error) {
        EXPECT_EQ(error.reason(), ConfigurationError::Reason::InvalidConfiguration);
        return error.description();
    }
}

const QString invalid =
    QStringLiteral("Supabase requires an HTTPS project URL and a public publishable key.");

TEST(SupabaseConfigurationRules, AnHttpsAddressAndAPublishableKeyAreTaken)
{
    const auto configuration = SupabaseConfiguration::fromPropertyList(
        plist("https://project.example:8443/base", "sb_publishable_x"));
    EXPECT_EQ(configuration.projectURL, QUrl(QStringLiteral("https://project.example:8443/base")));
    EXPECT_EQ(configuration.publishableKey, QStringLiteral("sb_publishable_x"));
}

TEST(SupabaseConfigurationRules, TheSchemeIsHttpsAsItIsWritten)
{
    EXPECT_EQ(problem("https://p.example"), QStringLiteral("fine"));
    for (const char *url : {"http://p.example", "HTTPS://p.example", "Https://p.example",
                            "p.example", "//p.example", "", " https://p.example"}) {
        EXPECT_EQ(problem(url), invalid) << url;
    }
}

TEST(SupabaseConfigurationRules, TheAddressHasAHostAndParses)
{
    for (const char *url : {"https:///path", "https:", "https://", "https:path",
                            "https://a b.example", "https://p.example:99999", "https://[::1"}) {
        EXPECT_EQ(problem(url), invalid) << url;
    }
}

TEST(SupabaseConfigurationRules, TheKeyIsMoreThanItsPrefix)
{
    EXPECT_EQ(problem("https://p.example", "sb_publishable_"), invalid);
    EXPECT_EQ(problem("https://p.example", "sb_publishable_1"), QStringLiteral("fine"));
    EXPECT_EQ(problem("https://p.example", "sb_secret_1234567890"), invalid);
    EXPECT_EQ(problem("https://p.example", "SB_PUBLISHABLE_1"), invalid);
    EXPECT_EQ(problem("https://p.example", ""), invalid);
}

TEST(SupabaseConfigurationRules, ALineBreakOrAnotherControlCharacterIsRefused)
{
    // The key becomes a header of every request: what follows a line break would be one of its own.
    for (const char *key :
         {"sb_publishable_x\n", "sb_publishable_x\nX-Admin: yes", "sb_publishable_x&#13;&#10;Y: z",
          "sb_publishable_&#13;", "sb_publishable_&#9;x", "sb_publishable_x&#x7f;",
          "sb_publishable_x&#x85;", "sb_publishable_x&#x2028;", "sb_publishable_x&#x2029;"})
        EXPECT_EQ(problem("https://p.example", key), invalid) << key;
    for (const char *url : {"https://p.example\n", "https://p.example/&#13;&#10;X: y",
                            "https://p.ex&#10;ample", "https://p.example/a&#9;b"})
        EXPECT_EQ(problem(url), invalid) << url;
}

TEST(SupabaseConfigurationRules, AFileThatIsNotAsExpectedIsTheReadersError)
{
    for (const char *document :
         {"", "{}", "<plist><array/></plist>",
          "<plist><dict><key>projectURL</key><string>https://p.example</string></dict></plist>",
          "<plist><dict><key>projectURL</key><integer>1</integer><key>publishableKey</key>"
          "<string>sb_publishable_x</string></dict></plist>"}) {
        EXPECT_THROW(SupabaseConfiguration::fromPropertyList(document), PropertyListError)
            << document;
    }
}

TEST(SupabaseConfigurationFile, AMissingFileIsSaidWhateverItWouldHold)
{
    const QTemporaryDir folder;
    EXPECT_FALSE(SupabaseConfiguration::exists(folder.path()));
    try {
        SupabaseConfiguration::load(folder.path());
        FAIL() << "no error";
    } catch (const ConfigurationError &error) {
        EXPECT_EQ(error.reason(), ConfigurationError::Reason::MissingResource);
        EXPECT_EQ(error.description(),
                  QStringLiteral("Supabase development configuration is missing."));
    }
}

TEST(SupabaseConfigurationFile, IsReadFromTheResourceFolder)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("SupabaseDevelopment.plist")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(plist("https://p.example", "sb_publishable_abc"));
    file.close();
    EXPECT_TRUE(SupabaseConfiguration::exists(folder.path()));
    EXPECT_EQ(SupabaseConfiguration::load(folder.path()).publishableKey,
              QStringLiteral("sb_publishable_abc"));
}

} // namespace
} // namespace veltrix
