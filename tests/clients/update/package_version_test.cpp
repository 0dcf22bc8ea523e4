// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/update/package_version.h"

#include "clients/update/test_package.h"
#include "clients/update/update_error.h"
#include "effects/atomic_file.h"
#include "support/json_printers.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QString unreadable =
    QStringLiteral("The update was refused: it is not a Debian package that can be read.");
const QString noVersion =
    QStringLiteral("The update was refused: its package doesn’t say which version it is.");

/// The version, or why there is none.
QString versionIn(const QByteArray &package)
{
    try {
        return debianPackageVersion(package);
    } catch (const UpdateError &error) {
        return error.description();
    }
}

QString verdict(const QByteArray &package, const char *announced, const char *installed)
{
    try {
        requirePackageVersion(package,
                              {QString::fromUtf8(announced), QString::fromUtf8(installed)});
        return QStringLiteral("fine");
    } catch (const UpdateError &error) {
        return error.description();
    }
}

TEST(PackageVersion, IsThatOfTheControlFileInEveryCompression)
{
    for (const auto compression : {TestCompression::None, TestCompression::Gzip,
                                   TestCompression::Xz, TestCompression::Zstd}) {
        EXPECT_EQ(versionIn(packageWith(controlOf("0.2.0"), compression)), QStringLiteral("0.2.0"))
            << int(compression);
    }
}

TEST(PackageVersion, IsReadFromWhatThePackageToolBuilds)
{
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("dpkg-deb"));
    if (tool.isEmpty())
        GTEST_SKIP() << "there is no dpkg-deb on this machine";
    const QTemporaryDir folder;
    const QString tree = folder.filePath(QStringLiteral("tree"));
    ASSERT_TRUE(QDir().mkpath(tree + QStringLiteral("/DEBIAN")));
    writeFileAtomically(tree + QStringLiteral("/DEBIAN/control"), controlOf("1:2.3.4-5"));
    ASSERT_TRUE(QFile::setPermissions(tree + QStringLiteral("/DEBIAN/control"),
                                      QFile::Permissions(0x6644)));
    for (const char *compression : {"none", "gzip", "xz", "zstd"}) {
        const QString path = folder.filePath(QStringLiteral("built.deb"));
        QProcess build;
        build.start(tool, {QStringLiteral("--build"), QStringLiteral("--root-owner-group"),
                           QStringLiteral("-Z%1").arg(QString::fromLatin1(compression)),
                           QStringLiteral("--uniform-compression"), tree, path});
        ASSERT_TRUE(build.waitForFinished());
        if (build.exitCode() != 0 && QByteArray(compression) == "zstd")
            continue; // Older package tools cannot write it.
        ASSERT_EQ(build.exitCode(), 0) << build.readAllStandardError().toStdString();
        EXPECT_EQ(versionIn(readWholeFile(path)), QStringLiteral("1:2.3.4-5")) << compression;
    }
}

TEST(PackageVersion, OnlyTheFieldItselfCounts)
{
    EXPECT_EQ(versionIn(packageWith("Package: a\nversion:1.2\n")), QStringLiteral("1.2"));
    EXPECT_EQ(versionIn(packageWith("Package: a\n")), noVersion);
    EXPECT_EQ(versionIn(packageWith("Description: a\n Version: 3\n")), noVersion);
    EXPECT_EQ(versionIn(packageWith("Package: a\n\nVersion: 3\n")), noVersion);
    EXPECT_EQ(versionIn(packageWith("Version: 3\nVersion: 4\n")), noVersion);
    EXPECT_EQ(versionIn(packageWith("Version: new\n")), noVersion);
    EXPECT_EQ(versionIn(packageWith("Version:\n")), noVersion);
    EXPECT_EQ(versionIn(packageWith("")), noVersion);
}

TEST(PackageVersion, WhatIsNoWholePackageIsRefused)
{
    const QByteArray control = tarOf({{"./control", controlOf("1.0")}});
    for (const QByteArray &package :
         {QByteArray(), QByteArray("!<arch>\n"), QByteArray("any bytes"), control,
          arOf({{"control.tar.gz", control}}), arOf({{"debian-binary", "2.0\n"}}),
          arOf({{"debian-binary", "2.0\n"}, {"data.tar.gz", control}}),
          arOf({{"debian-binary", "2.0\n"}, {"control.tar.gz", "no archive"}}),
          arOf({{"debian-binary", "2.0\n"}, {"control.tar.gz", tarOf({{"./md5sums", "x"}})}})})
        EXPECT_EQ(versionIn(package), unreadable) << package.left(80).toStdString();
    const QByteArray whole = packageOf("1.0");
    const qsizetype needed = whole.indexOf("data.tar.gz");
    for (qsizetype length = 0; length < needed - 1; length += 7)
        EXPECT_EQ(versionIn(whole.first(length)), unreadable) << length;
}

TEST(PackageVersion, ADamagedPackageIsRefusedOrReadAndNeverMore)
{
    const QByteArray whole = packageOf("1.0");
    for (qsizetype at = 0; at < whole.size(); ++at) {
        for (const char change : {'\x01', '\x80', '\x7f'}) {
            QByteArray damaged = whole;
            damaged[at] = char(damaged[at] ^ change);
            versionIn(damaged);
        }
    }
}

TEST(PackageVersion, AnArchiveThatBlowsUpIsRefusedAtOnce)
{
    QElapsedTimer timer;
    timer.start();
    const QByteArray zeros(64 * 1024 * 1024, '\0');
    const auto around = [](const TestMembers &members) {
        return arOf({{"debian-binary", "2.0\n"}, {"control.tar.gz", tarOf(members)}});
    };
    const QByteArray beforeIt = around({{"./zeros", zeros}, {"./control", controlOf("1.0")}});
    const QByteArray inIt = around({{"./control", controlOf("1.0") + zeros}});
    TestMembers many(2000, {"./empty", ""});
    many.append({"./control", controlOf("1.0")});
    const QByteArray behindMany = around(many);
    timer.restart();
    EXPECT_LT(beforeIt.size(), 1'000'000);
    EXPECT_EQ(versionIn(beforeIt), unreadable);
    EXPECT_EQ(versionIn(inIt), unreadable);
    EXPECT_EQ(versionIn(behindMany), unreadable);
    EXPECT_LT(timer.elapsed(), 1000);
    EXPECT_EQ(versionIn(arOf(
                  {{"debian-binary", "2.0\n"}, {"control.tar", QByteArray(5 * 1024 * 1024, 'x')}})),
              unreadable);
}

TEST(PackageVersion, MustBeTheAnnouncedOneAndNewerThanTheInstalled)
{
    const QByteArray package = packageOf("0.2.0");
    EXPECT_EQ(verdict(package, "0.2.0", "0.1.0"), QStringLiteral("fine"));
    EXPECT_EQ(verdict(package, "0.2", "0.1.9"), QStringLiteral("fine"));
    EXPECT_EQ(verdict(package, "0.3.0", "0.1.0"),
              QStringLiteral("The update was refused: its package holds version 0.2.0, not the "
                             "announced 0.3.0."));
    EXPECT_EQ(verdict(package, "0.1.0", "0.0.1"),
              QStringLiteral("The update was refused: its package holds version 0.2.0, not the "
                             "announced 0.1.0."));
    for (const char *installed : {"0.2.0", "0.2.1", "1"}) {
        EXPECT_EQ(verdict(package, "0.2.0", installed),
                  QStringLiteral("The update was refused: its package holds version 0.2.0, which "
                                 "is not newer than this one."))
            << installed;
    }
    EXPECT_EQ(verdict("no package", "0.2.0", "0.1.0"), unreadable);
}

} // namespace
} // namespace veltrix
