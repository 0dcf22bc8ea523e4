// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/information_dictionary.h"

#include "support/json_printers.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

TEST(InformationDictionary, GivesTextsAndTreatsOtherKindsAsAbsent)
{
    const InformationDictionary info(
        readPropertyList("<plist><dict><key>a</key><string>1.4</string><key>b</key>"
                         "<integer>27</integer></dict></plist>"));
    EXPECT_EQ(info.text(QStringLiteral("a")), QStringLiteral("1.4"));
    EXPECT_EQ(info.text(QStringLiteral("b")), std::nullopt);
    EXPECT_EQ(info.text(QStringLiteral("c")), std::nullopt);
    EXPECT_THROW(InformationDictionary(readPropertyList("<plist><array/></plist>")),
                 PropertyListError);
}

TEST(InformationDictionary, AMissingFileIsEmptyAndABrokenOneAnError)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Info.plist"));
    EXPECT_EQ(InformationDictionary::load(path).text(QStringLiteral("a")), std::nullopt);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<plist><dict><key>a</key>");
    file.close();
    EXPECT_THROW(InformationDictionary::load(path), PropertyListError);
}

} // namespace
} // namespace veltrix
