// SPDX-License-Identifier: GPL-3.0-or-later
#include "architecture/include_rules.h"

#include "support/json_printers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

QString onlyFault(const char *path, const char *include)
{
    const QStringList faults = forbiddenIncludes(
        QString::fromUtf8(path), QStringLiteral("#include %1\n").arg(QString::fromUtf8(include)));
    return faults.join(u'\n');
}

TEST(Includes, OfTheSourcesKeepTheRules)
{
    const QDir sources(QStringLiteral(VELTRIX_SOURCE_FOLDER "/src"));
    QStringList faults;
    int count = 0;
    for (QDirIterator files(sources.path(), {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                            QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
        faults += forbiddenIncludes(sources.relativeFilePath(file.fileName()),
                                    QString::fromUtf8(file.readAll()));
        ++count;
    }
    EXPECT_GT(count, 300);
    EXPECT_EQ(faults, QStringList());
}

TEST(Includes, ThatClimbAreFound)
{
    EXPECT_EQ(onlyFault("clients/http.cpp", "\"store/aso_store.h\""),
              QStringLiteral("clients/http.cpp: store/aso_store.h: clients does not see store"));
    EXPECT_EQ(onlyFault("store/aso_store.h", "\"clients/http.h\""),
              QStringLiteral("store/aso_store.h: clients/http.h: store does not see clients"));
    EXPECT_NE(onlyFault("model/date.h", "<effects/clock.h>"), QString());
    EXPECT_NE(onlyFault("model/date.h", "\"../effects/clock.h\""), QString());
    EXPECT_NE(onlyFault("model/date.h", "\"error.h\""), QString());
    EXPECT_NE(onlyFault("attic/date.h", "\"model/date.h\""), QString());
    EXPECT_EQ(onlyFault("store/aso_store.h", "\"scoring/keyword_pipeline.h\""), QString());
}

TEST(Includes, ThatClimbInsideAFloorAreFound)
{
    EXPECT_NE(onlyFault("ui_kit/theme/tokens.h", "\"ui_kit/widgets/button.h\""), QString());
    EXPECT_NE(onlyFault("ui/dashboard/dashboard_page.h", "\"ui/shell/main_window.h\""), QString());
    EXPECT_NE(onlyFault("ui/dashboard/dashboard_page.h", "\"ui/competitors/competitors_view.h\""),
              QString());
    EXPECT_NE(onlyFault("ui/attic/page.h", "\"ui/attic/list.h\""), QString());
    EXPECT_EQ(onlyFault("ui/competitors/competitors_view.h", "\"ui/listing/app_header.h\""),
              QString());
    EXPECT_EQ(onlyFault("ui/shell/main_window.h", "\"ui/settings/settings_sheet.h\""), QString());
}

TEST(Includes, OfTheSystemStandInNamedFilesOnly)
{
    for (const char *header : {"<unistd.h>", "<sys/stat.h>", "<fcntl.h>", "<csignal>", "<cerrno>",
                               "<linux/fs.h>", "<QDBusConnection>", "<QtDBus/QDBusConnection>"}) {
        EXPECT_NE(onlyFault("store/state_file.cpp", header), QString()) << header;
        EXPECT_NE(onlyFault("effects/data_folder_lock.cpp", header), QString()) << header;
        EXPECT_NE(onlyFault("app/main.cpp", header), QString()) << header;
        EXPECT_EQ(onlyFault("effects/linux/file_lock.cpp", header), QString()) << header;
        EXPECT_EQ(onlyFault("app/desktop_color_scheme.cpp", header), QString()) << header;
    }
}

TEST(Includes, OfNetworkFilesAndProcessesAreFoundInWindows)
{
    for (const char *header :
         {"<QNetworkReply>", "<QtNetwork/QNetworkReply>", "<QLocalServer>", "<QFile>",
          "<QFileInfo>", "<QDir>", "<QFileDialog>", "<QtWidgets/QFileDialog>", "<QSaveFile>",
          "<QProcess>", "<QStandardPaths>", "<QSettings>", "<fstream>", "<filesystem>",
          "<cstdio>"}) {
        EXPECT_NE(onlyFault("ui/shell/main_window.cpp", header), QString()) << header;
        EXPECT_NE(onlyFault("ui_kit/theme/symbols.cpp", header), QString()) << header;
    }
    EXPECT_NE(onlyFault("ui/shell/main_window.cpp", "\"effects/atomic_file.h\""), QString());
    EXPECT_EQ(onlyFault("ui/shell/main_window.cpp", "\"effects/task_scope.h\""), QString());
    EXPECT_EQ(onlyFault("clients/network_http.cpp", "<QNetworkReply>"), QString());
}

} // namespace
} // namespace veltrix
