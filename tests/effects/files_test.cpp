// SPDX-License-Identifier: GPL-3.0-or-later
// Which file lies at a path, links, what is kept and what is cleared.
#include "effects/data_locations.h"
#include "effects/kept_copy.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace veltrix
{
namespace
{

class Files : public testing::Test
{
protected:
    // Tests else have folders of their own, whatever the environment says.
    Files() { QStandardPaths::setTestModeEnabled(false); }
    ~Files() override { QStandardPaths::setTestModeEnabled(true); }

    [[nodiscard]] QString path(const char *name) const
    {
        return m_folder.filePath(QString::fromUtf8(name));
    }
    void put(const char *name, QByteArrayView content = "x") const
    {
        writeFileAtomically(path(name), content);
    }
    [[nodiscard]] QStringList entries(const char *name = "") const
    {
        return QDir(path(name))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDir::Name);
    }
    [[nodiscard]] QString whyUnknown(const char *name) const
    {
        const FileLook look = lookAtFile(path(name));
        const auto *unknown = std::get_if<UnknownFile>(&look);
        return unknown ? unknown->reason : QStringLiteral("known");
    }

    QTemporaryDir m_folder;
};

TEST_F(Files, OnlyAMissingNameInAFolderThatIsThereIsNoFile)
{
    put("file");
    EXPECT_EQ(lookAtFile(path("missing")), FileLook(NoFile()));
    EXPECT_TRUE(std::holds_alternative<FileIdentity>(lookAtFile(path("file"))));
    EXPECT_EQ(whyUnknown("nowhere/file"),
              QStringLiteral("The folder “%1” is not there").arg(path("nowhere")));
    EXPECT_EQ(whyUnknown("file/file"), QStringLiteral("Not a directory"));
    QFile::link(path("nowhere/file"), path("dangling"));
    EXPECT_EQ(whyUnknown("dangling"), QStringLiteral("It is a link to a file that is not there"));
    QFile::link(path("circle"), path("circle"));
    EXPECT_EQ(whyUnknown("circle"), QStringLiteral("Too many levels of symbolic links"));
    EXPECT_EQ(whyUnknown(QByteArray(300, 'x').constData()), QStringLiteral("File name too long"));
}

TEST_F(Files, AnIdentityChangesWithTheContentAndTheFileButNotWithNamesAndRights)
{
    put("file", "one");
    const FileLook before = lookAtFile(path("file"));
    ASSERT_EQ(::chmod(qPrintable(path("file")), 0640), 0);
    ASSERT_EQ(::link(qPrintable(path("file")), qPrintable(path("second"))), 0);
    EXPECT_EQ(lookAtFile(path("file")), before);
    EXPECT_EQ(lookAtFile(path("second")), before);
    put("file", "one");
    EXPECT_NE(lookAtFile(path("file")), before);
    QFile second(path("second"));
    ASSERT_TRUE(second.open(QIODevice::WriteOnly));
    second.write("two");
    second.close();
    EXPECT_NE(lookAtFile(path("second")), before);
}

TEST_F(Files, ALinkIsWrittenAtItsTarget)
{
    QDir().mkpath(path("far/away"));
    put("far/real.json", "old");
    QFile::link(path("far/real.json"), path("far/away/second"));
    // Relative, as people make them.
    ASSERT_EQ(::symlink("far/away/second", qPrintable(path("state.json"))), 0);
    put("state.json", "new");
    EXPECT_EQ(readWholeFile(path("far/real.json")), "new");
    EXPECT_TRUE(QFileInfo(path("state.json")).isSymLink());
    EXPECT_TRUE(QFileInfo(path("far/away/second")).isSymLink());
    EXPECT_EQ(entries("far"), (QStringList{QStringLiteral("away"), QStringLiteral("real.json")}));
}

TEST_F(Files, ALinkToAFileThatIsYetToBeMakesIt)
{
    QDir().mkpath(path("far"));
    QFile::link(path("far/real.json"), path("state.json"));
    put("state.json", "new");
    EXPECT_EQ(readWholeFile(path("far/real.json")), "new");
    EXPECT_TRUE(QFileInfo(path("state.json")).isSymLink());
}

TEST_F(Files, LinksThatLeadInACircleAreAnError)
{
    QFile::link(path("b"), path("a"));
    QFile::link(path("a"), path("b"));
    EXPECT_THROW(put("a"), FileError);
    EXPECT_EQ(entries(), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(Files, WhatIsKeptBesideALinkIsItsTarget)
{
    QDir().mkpath(path("far"));
    put("far/real.json", "old");
    QFile::link(path("far/real.json"), path("state.json"));
    const QString kept = keepUnderDatedName(path("state.json"), u"replaced", Date());
    EXPECT_EQ(kept, path("far/real.replaced-2001-01-01T00-00-00Z.json"));
    put("state.json", "new");
    EXPECT_EQ(readWholeFile(kept), "old");
}

TEST_F(Files, InterruptedWritesOfAllFilesOfAFolderAreCleared)
{
    QDir().mkpath(path("far"));
    QFile::link(path("far/real.json"), path("state.json"));
    const QStringList leftovers{QStringLiteral(".aso_store_state.json.0a1b2c3d.tmp"),
                                QStringLiteral(".ranked_apps_cache_v1.json.ffffffff.tmp"),
                                QStringLiteral(".autocomplete_visibility_v2.json.01234567.tmp"),
                                QStringLiteral("far/.real.json.89abcdef.tmp")};
    const QStringList others{QStringLiteral(".veltrix.lock"), QStringLiteral("x.0a1b2c3d.tmp"),
                             QStringLiteral(".x.0a1b2c3d"), QStringLiteral(".x.backup00.tmp"),
                             QStringLiteral("far/.other.json.89abcdef.tmp")};
    for (const QString &name : leftovers + others)
        put(qPrintable(name));
    removeInterruptedWritesIn(m_folder.path());
    for (const QString &name : leftovers)
        EXPECT_FALSE(QFileInfo::exists(m_folder.filePath(name))) << qPrintable(name);
    for (const QString &name : others)
        EXPECT_TRUE(QFileInfo::exists(m_folder.filePath(name))) << qPrintable(name);
    EXPECT_TRUE(QFileInfo(path("state.json")).isSymLink());
}

/// Sets a variable of the environment for a test.
class Variable
{
public:
    Variable(const char *name, const QByteArray &value) : m_name(name), m_before(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~Variable()
    {
        if (m_before.isNull())
            qunsetenv(m_name);
        else
            qputenv(m_name, m_before);
    }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    const char *m_name;
    QByteArray m_before;
};

TEST_F(Files, LieInTheFoldersOfTheDesktop)
{
    const Variable home("HOME", path("home").toUtf8());
    const Variable data("XDG_DATA_HOME", path("data").toUtf8());
    const Variable cache("XDG_CACHE_HOME", path("cache").toUtf8());
    const Variable config("XDG_CONFIG_HOME", path("config").toUtf8());
    EXPECT_EQ(dataFolder(), path("data/Veltrix"));
    EXPECT_EQ(cacheFolder(), path("cache/Veltrix"));
    EXPECT_EQ(preferencesPath(), path("config/Veltrix/Veltrix.conf"));
}

TEST_F(Files, ARelativeFolderOfTheDesktopIsIgnored)
{
    const QString before = QDir::currentPath();
    QDir::setCurrent(m_folder.path());
    {
        const Variable home("HOME", path("home").toUtf8());
        const Variable data("XDG_DATA_HOME", "data");
        const Variable cache("XDG_CACHE_HOME", "./cache");
        const Variable config("XDG_CONFIG_HOME", "~/config");
        const Variable runtime("XDG_RUNTIME_DIR", "run");
        EXPECT_EQ(dataFolder(), path("home/.local/share/Veltrix"));
        EXPECT_EQ(cacheFolder(), path("home/.cache/Veltrix"));
        EXPECT_EQ(preferencesPath(), path("home/.config/Veltrix/Veltrix.conf"));
        EXPECT_EQ(runtimeFolder(), QDir::tempPath());
        qputenv("XDG_CACHE_HOME", path("cache").toUtf8());
        dropRelativeFolders();
        EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"));
        EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_DATA_HOME"));
        EXPECT_EQ(qgetenv("XDG_CACHE_HOME"), path("cache").toUtf8());
    }
    QDir::setCurrent(before);
    EXPECT_EQ(entries(), QStringList{QStringLiteral("home")});
}

} // namespace
} // namespace veltrix
