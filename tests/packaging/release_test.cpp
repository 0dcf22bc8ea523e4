// SPDX-License-Identifier: GPL-3.0-or-later
// scripts/release, on a small repository and with a stand-in for the command that makes the
// package.
#include "clients/update/package_version.h"
#include "clients/update/test_package.h"
#include "clients/update/update_selection.h"
#include "effects/atomic_file.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

const QString feedUrl = QStringLiteral("https://updates.example/veltrix/appcast.xml");

struct Outcome {
    int status = -1;
    std::string output;
};

/// A repository with what a release reads, and beside it a key and a stand-in for scripts/package.
class Release : public testing::Test
{
protected:
    Release()
    {
        QDir(m_folder.path()).mkpath(QStringLiteral("repository/scripts"));
        for (const char *script : {"release", "feed_item.py"}) {
            EXPECT_TRUE(QFile::copy(QStringLiteral(VELTRIX_SCRIPTS "/") + QLatin1String(script),
                                    file("repository/scripts/") + QLatin1String(script)));
        }
        writeProgram("repository/scripts/setup", "#!/bin/sh\n");
        writeProgram("make-package", "#!/bin/sh\n"
                                     "echo \"$@\" >\"$0.arguments\"\n"
                                     "while [ \"$1\" != --output ]; do shift; done\n"
                                     "mkdir -p \"$2\" && cp \"${0%/*}/made.deb\" "
                                     "\"$2/veltrix_made.deb\"\n");
        shell("cd repository && git init -q && git config user.name T && "
              "git config user.email t@veltrix.example");
        shell("openssl genpkey -algorithm ed25519 -out key.pem");
        commitVersion("0.1.0");
    }

    [[nodiscard]] QString file(const char *name) const
    {
        return m_folder.path() + u'/' + QLatin1String(name);
    }

    void write(const char *name, const QByteArray &content) const
    {
        QDir(m_folder.path()).mkpath(QFileInfo(QLatin1String(name)).path());
        QFile out(file(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        ASSERT_EQ(out.write(content), content.size());
    }

    void writeProgram(const char *name, const QByteArray &content) const
    {
        write(name, content);
        QFile::setPermissions(file(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    [[nodiscard]] Outcome shell(const QString &line) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral("bash"), {QStringLiteral("-c"), line});
        process.waitForFinished();
        return {process.exitCode(), process.readAll().toStdString()};
    }

    void shell(const char *line) const
    {
        const Outcome outcome = shell(QString::fromUtf8(line));
        EXPECT_EQ(outcome.status, 0) << outcome.output;
    }

    /// Commits a project of that version, tags it, and has the stand-in make such a package.
    void commitVersion(const QByteArray &version)
    {
        write("repository/CMakeLists.txt",
              "project(veltrix VERSION " + version + " LANGUAGES CXX)\n");
        write("repository/packaging/changelog",
              "veltrix (" + version +
                  ") bookworm; urgency=medium\n\n"
                  "  * Rankings load faster,\n    & <all> of them.\n  * Charts are wider.\n\n"
                  " -- T <t@veltrix.example>  Sun, 22 Nov 2026 12:00:00 +0000\n");
        write("repository/resources/veltrix.metainfo.xml",
              "<component><releases><release version=\"" + version +
                  "\"/></releases></component>\n");
        write("made.deb", packageOf(version));
        commit();
        shell(("cd repository && git tag v" + version).constData());
    }

    void commit() const { shell("cd repository && git add -A && git commit -qm Change"); }

    [[nodiscard]] Outcome release(const QString &tag, const QString &more = {}) const
    {
        return shell(QStringLiteral("repository/scripts/release %1 --key key.pem --feed-url %2 "
                                    "--package-command make-package --output made %3")
                         .arg(tag, feedUrl, more));
    }

    /// Expects a refusal that says why, before a package was made.
    void expectRefused(const Outcome &outcome, const char *why) const
    {
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.output.find(why), std::string::npos) << outcome.output;
        EXPECT_FALSE(QFile::exists(file("make-package.arguments")));
        EXPECT_FALSE(QFile::exists(file("made")));
    }

    [[nodiscard]] QString publicKey() const
    {
        const Outcome key = shell(
            QStringLiteral("openssl pkey -in key.pem -pubout -outform DER | tail -c 32 | base64"));
        return QString::fromStdString(key.output).trimmed();
    }

    [[nodiscard]] UpdateSelection selectionFor(const char *installed) const
    {
        UpdateTarget target;
        target.installedVersion = QLatin1String(installed);
        return selectUpdate(readAppcast(readWholeFile(file("appcast.xml"))), target);
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(Release, MakesWhatAnOlderCopyAccepts)
{
    commitVersion("0.2.0");
    const Outcome made = release(QStringLiteral("v0.2.0"), QStringLiteral("--feed appcast.xml"));
    ASSERT_EQ(made.status, 0) << made.output;

    const UpdateSelection selection = selectionFor("0.1.0");
    ASSERT_TRUE(selection.offer && selection.offer->package);
    EXPECT_TRUE(selection.skipped.isEmpty());
    EXPECT_EQ(selection.offer->version, u"0.2.0");
    EXPECT_EQ(selection.offer->notes,
              u"<ul><li>Rankings load faster, &amp; &lt;all&gt; of them.</li>"
              u"<li>Charts are wider.</li></ul>");
    const UpdatePackage &package = *selection.offer->package;
    EXPECT_EQ(package.url.toString(), u"https://updates.example/veltrix/veltrix_made.deb");
    const QByteArray bytes = readWholeFile(file("made/veltrix_made.deb"));
    const auto key = UpdateKey::fromBase64(publicKey());
    ASSERT_TRUE(key);
    EXPECT_NO_THROW(key->requireGenuine(bytes, package.length, package.signature));
    EXPECT_NO_THROW(
        requirePackageVersion(bytes, {selection.offer->version, QStringLiteral("0.1.0")}));
    EXPECT_FALSE(selectionFor("0.2.0").offer);
}

TEST_F(Release, TellsThePackageItsFeedAndKey)
{
    ASSERT_EQ(release(QStringLiteral("v0.1.0"), QStringLiteral("--set VELTRIX_TERMS_URL=x")).status,
              0);
    const QString arguments = QString::fromUtf8(readWholeFile(file("make-package.arguments")));
    EXPECT_TRUE(arguments.startsWith(
        QStringLiteral("--feed %1 --public-key %2 --output ").arg(feedUrl, publicKey())));
    EXPECT_TRUE(arguments.endsWith(QStringLiteral(" --set VELTRIX_TERMS_URL=x\n")));
}

TEST_F(Release, AddsToAFeedAndLeavesTheRestOfIt)
{
    ASSERT_EQ(release(QStringLiteral("v0.1.0"), QStringLiteral("--feed appcast.xml")).status, 0);
    const Appcast before = readAppcast(readWholeFile(file("appcast.xml")));
    commitVersion("0.2.0");
    ASSERT_EQ(release(QStringLiteral("v0.2.0"), QStringLiteral("--feed appcast.xml")).status, 0);
    const Appcast after = readAppcast(readWholeFile(file("appcast.xml")));
    ASSERT_EQ(after.items.size(), 2);
    EXPECT_EQ(after.items[0], before.items[0]);
    EXPECT_EQ(after.items[1].version, u"0.2.0");
}

TEST_F(Release, RefusesAVersionThatIsNotNewerThanTheFeed)
{
    write("appcast.xml", "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/"
                         "xml-namespaces/sparkle\"><channel><item><sparkle:version>0.1.0"
                         "</sparkle:version></item></channel></rss>");
    const QByteArray before = readWholeFile(file("appcast.xml"));
    expectRefused(release(QStringLiteral("v0.1.0"), QStringLiteral("--feed appcast.xml")),
                  "0.1.0 is not newer than 0.1.0, which the feed has");
    EXPECT_EQ(readWholeFile(file("appcast.xml")), before);
}

TEST_F(Release, RefusesAVersionThatIsNotNewerThanATagBeforeIt)
{
    commitVersion("0.0.9");
    expectRefused(release(QStringLiteral("v0.0.9")), "0.0.9 is not newer than v0.1.0");
}

TEST_F(Release, RefusesATagThatIsNoneOrNotThere)
{
    expectRefused(release(QStringLiteral("0.1.0")), "no version tag");
    expectRefused(release(QStringLiteral("v1")), "no version tag");
    expectRefused(release(QStringLiteral("v0.3.0")), "there is no tag 'v0.3.0'");
}

TEST_F(Release, RefusesATagOfAnotherVersion)
{
    shell("cd repository && git tag v0.2.0");
    expectRefused(release(QStringLiteral("v0.2.0")),
                  "the tag is v0.2.0, and the project's version 0.1.0");
}

TEST_F(Release, RefusesAChangelogOrMetainfoWithoutTheVersion)
{
    write("repository/CMakeLists.txt", "project(veltrix VERSION 0.2.0 LANGUAGES CXX)\n");
    commit();
    shell("cd repository && git tag v0.2.0");
    expectRefused(release(QStringLiteral("v0.2.0")), "changelog begins with 0.1.0, not with 0.2.0");
    shell("cd repository && sed -i 's/0.1.0/0.2.0/' packaging/changelog");
    commit();
    shell("cd repository && git tag -f v0.2.0");
    expectRefused(release(QStringLiteral("v0.2.0")), "metainfo.xml has no release 0.2.0");
}

TEST_F(Release, RefusesChangesThatAreNotCommitted)
{
    write("repository/note.txt", "new");
    expectRefused(release(QStringLiteral("v0.1.0")), "changes that are not committed");
}

TEST_F(Release, RefusesAKeyThatIsMissingOrAnother)
{
    expectRefused(release(QStringLiteral("v0.1.0"), QStringLiteral("--key absent.pem")),
                  "is not there");
    shell("openssl genpkey -algorithm x25519 -out other.pem");
    expectRefused(release(QStringLiteral("v0.1.0"), QStringLiteral("--key other.pem")),
                  "is no Ed25519 key");
    expectRefused(release(QStringLiteral("v0.1.0"), QStringLiteral("--public-key AAAA")),
                  "is not the key of the public key");
}

TEST_F(Release, RefusesAddressesThatNoCopyAccepts)
{
    expectRefused(release(QStringLiteral("v0.1.0"),
                          QStringLiteral("--feed-url http://updates.example/a.xml")),
                  "must begin with https://");
}

TEST_F(Release, RefusesAPackageOfAnotherVersion)
{
    write("made.deb", packageOf("0.1.1"));
    const Outcome outcome = release(QStringLiteral("v0.1.0"), QStringLiteral("--feed appcast.xml"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.output.find("the package is of version 0.1.1"), std::string::npos);
    EXPECT_FALSE(QFile::exists(file("appcast.xml")));
    EXPECT_FALSE(QFile::exists(file("made")));
}

} // namespace
} // namespace veltrix
