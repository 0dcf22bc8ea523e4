// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/bundle.h"
#include "clients/update/version_order.h"
#include "effects/atomic_file.h"
#include "support/json_printers.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class BundleTest : public testing::Test
{
protected:
    Bundle bundleWith(const QByteArray &members) const
    {
        writeFileAtomically(m_folder.filePath(QStringLiteral("Info.plist")),
                            "<plist version=\"1.0\"><dict>" + members + "</dict></plist>");
        return Bundle(m_folder.path());
    }

    QTemporaryDir m_folder;
};

TEST_F(BundleTest, ShowsTheShortVersionWithTheBuildNumber)
{
    EXPECT_EQ(bundleWith("<key>CFBundleShortVersionString</key><string>1.4</string>"
                         "<key>CFBundleVersion</key><string>27</string>")
                  .versionText(),
              QStringLiteral("1.4 (27)"));
}

TEST_F(BundleTest, AnEmptyBuildNumberIsNotShown)
{
    EXPECT_EQ(bundleWith("<key>CFBundleShortVersionString</key><string>1.4</string>"
                         "<key>CFBundleVersion</key><string></string>")
                  .versionText(),
              QStringLiteral("1.4"));
}

TEST_F(BundleTest, WithNeitherTheVersionIsADash)
{
    EXPECT_EQ(bundleWith("").versionText(), QStringLiteral("—"));
    EXPECT_EQ(bundleWith("<key>CFBundleShortVersionString</key><integer>1</integer>").versionText(),
              QStringLiteral("—"));
}

TEST_F(BundleTest, AMissingOrDamagedDictionaryIsAnEmptyOne)
{
    EXPECT_EQ(Bundle(m_folder.filePath(QStringLiteral("nowhere"))).versionText(),
              QStringLiteral("—"));
    writeFileAtomically(m_folder.filePath(QStringLiteral("Info.plist")), "<plist><dict>");
    EXPECT_EQ(Bundle(m_folder.path()).information(QStringLiteral("SUFeedURL")), std::nullopt);
    writeFileAtomically(m_folder.filePath(QStringLiteral("Info.plist")), "<plist><array/></plist>");
    EXPECT_EQ(Bundle(m_folder.path()).versionText(), QStringLiteral("—"));
}

TEST(BuiltBundle, TheBuildNumberIsTheVersionSoThatTheNextReleaseIsNewer)
{
    // The tree of a build looks like an installation, and this test stands beside the program.
    const Bundle bundle = Bundle::ofThisProgram();
    const QString build = bundle.information(QStringLiteral("CFBundleVersion")).value_or(QString());
    EXPECT_EQ(build, bundle.information(QStringLiteral("CFBundleShortVersionString")));
    QStringList numbers = build.split(u'.');
    ASSERT_EQ(numbers.size(), 3) << build.toStdString();
    for (QString &number : numbers) {
        const QString before = number;
        number = QString::number(number.toInt() + 1);
        EXPECT_TRUE(compareVersions(numbers.join(u'.'), build) > 0)
            << numbers.join(u'.').toStdString();
        number = before;
    }
}

} // namespace
} // namespace veltrix
