// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/settings_file.h"

#include "effects/atomic_file.h"

#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class SettingsFileTest : public testing::Test
{
protected:
    [[nodiscard]] SettingsFile open() const { return {m_path, m_files}; }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("veltrix.conf"));
    std::shared_ptr<FileThread> m_files = std::make_shared<FileThread>();
    const QString m_theme = QStringLiteral("theme");
};

TEST_F(SettingsFileTest, WhatIsSetIsThereAtOnceAndAfterARestart)
{
    SettingsFile settings = open();
    EXPECT_EQ(settings.value(m_theme, 7), 7);
    EXPECT_FALSE(settings.contains(m_theme));
    settings.setValue(m_theme, QStringLiteral("dark"));
    settings.setValue(QStringLiteral("geometry"), QByteArray("\x01\x02"));
    EXPECT_EQ(settings.value(m_theme), QStringLiteral("dark"));
    settings.sync();
    const SettingsFile next = open();
    EXPECT_EQ(next.value(m_theme), QStringLiteral("dark"));
    EXPECT_EQ(next.value(QStringLiteral("geometry")).toByteArray(), QByteArray("\x01\x02"));
}

TEST_F(SettingsFileTest, TheFileIsTheOneThatEarlierVersionsHaveWritten)
{
    QSettings(m_path, QSettings::IniFormat).setValue(m_theme, QStringLiteral("light"));
    const QByteArray before = readWholeFile(m_path);
    SettingsFile settings = open();
    EXPECT_EQ(settings.value(m_theme), QStringLiteral("light"));
    settings.setValue(m_theme, QStringLiteral("light"));
    settings.sync();
    EXPECT_EQ(readWholeFile(m_path), before);
}

TEST_F(SettingsFileTest, WhatAnotherProgramHasSetMeanwhileStays)
{
    SettingsFile settings = open();
    SettingsFile other(m_path, std::make_shared<FileThread>());
    other.setValue(QStringLiteral("columns"), QStringLiteral("a b"));
    other.sync();
    settings.setValue(m_theme, QStringLiteral("dark"));
    settings.sync();
    EXPECT_EQ(open().value(QStringLiteral("columns")), QStringLiteral("a b"));
}

TEST_F(SettingsFileTest, AFileThatCannotBeWrittenHarmsNothing)
{
    m_path = QStringLiteral("/proc/none/veltrix.conf");
    SettingsFile settings = open();
    settings.setValue(m_theme, QStringLiteral("dark"));
    settings.sync();
    EXPECT_EQ(settings.value(m_theme), QStringLiteral("dark"));
}

} // namespace
} // namespace veltrix
